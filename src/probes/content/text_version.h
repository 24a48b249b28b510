// Design Web Format files begin with their version in text: "(DWF V06.00)".
#ifndef FI_PROBES_CONTENT_TEXT_VERSION_H_
#define FI_PROBES_CONTENT_TEXT_VERSION_H_

#include "engine/id_stream.h"
#include "formatid/formatid.h"

namespace fi {

// kFormatDwfBelow6 or kFormatDwf6 by the major version; never kNoMatch but for a failed seek.
// REQUIRES: the file begins with "(DWF V".
FormatId TextVersionProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_CONTENT_TEXT_VERSION_H_
