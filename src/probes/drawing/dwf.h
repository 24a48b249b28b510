// Design Web Format files begin with their version in text: "(DWF V06.00)".
#ifndef FI_PROBES_DRAWING_DWF_H_
#define FI_PROBES_DRAWING_DWF_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatDwfBelow6 or kFormatDwf6 by the major version; never kNoMatch but for a failed seek.
// REQUIRES: the file begins with "(DWF V".
FormatId DwfProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_DRAWING_DWF_H_
