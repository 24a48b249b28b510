// FrameMaker interchange files begin with their version in a tag: "<MIFFile 5.00>". Japanese
// releases write "JP" before it.
#ifndef FI_PROBES_CONTENT_VERSION_DIGIT_H_
#define FI_PROBES_CONTENT_VERSION_DIGIT_H_

#include "engine/id_stream.h"
#include "formatid/formatid.h"

namespace fi {

// The identifier of the version that follows the stream's position, kFormatMifOther when none does.
// REQUIRES: the stream stands behind "<MIFFile".
FormatId VersionDigitProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_CONTENT_VERSION_DIGIT_H_
