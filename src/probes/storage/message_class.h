// Tells the items of a mail program apart by their message class (IPM.Note, IPM.Contact ...).
#ifndef FI_PROBES_STORAGE_MESSAGE_CLASS_H_
#define FI_PROBES_STORAGE_MESSAGE_CLASS_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// The item's identifier in the family of `baseId`: kFormatOutlookMessage (messages) or any other
// (templates). An item whose class is unknown or not stored gets the family's default. The stream
// is not moved.
FormatId MapMessageClass(IdentificationStream* stream, FormatId baseId);

// The same for an item with its class in UTF-16 alone, for which MapMessageClass gives the default.
// kNoMatch for a class in 8 bits, and for an unknown class.
FormatId MapWideMessageClass(IdentificationStream* stream, FormatId baseId);

}  // namespace fi

#endif  // FI_PROBES_STORAGE_MESSAGE_CLASS_H_
