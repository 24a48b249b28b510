// Tells the items of a mail program apart by their message class (IPM.Note, IPM.Contact ...).
#ifndef FI_PROBES_STORAGE_MESSAGE_CLASS_H_
#define FI_PROBES_STORAGE_MESSAGE_CLASS_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// The item's identifier in the family of `baseId`: 1143 (messages) or any other (templates). An
// item whose class is unknown or not stored gets the family's default. The stream is not moved.
FormatId MapMessageClass(IdentificationStream* stream, FormatId baseId);

// The same for an item whose class is stored as UTF-16 alone, which MapMessageClass answers with
// the default: kNoMatch where it is stored in 8 bits, or is not known.
FormatId MapWideMessageClass(IdentificationStream* stream, FormatId baseId);

}  // namespace fi

#endif  // FI_PROBES_STORAGE_MESSAGE_CLASS_H_
