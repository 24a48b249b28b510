// FrameMaker interchange files begin with their version in a tag: "<MIFFile 5.00>". Japanese
// releases write "JP" before it.
#ifndef FI_PROBES_DOCUMENT_MIF_H_
#define FI_PROBES_DOCUMENT_MIF_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// The identifier of the version that follows the stream's position, kFormatMifOther when none does.
// REQUIRES: the stream stands behind "<MIFFile".
FormatId MifProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_DOCUMENT_MIF_H_
