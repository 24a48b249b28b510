// Data for printers: jobs in PJL begin with the universal exit sequence and the first command, PCL
// with a reset and another escape sequence.
#ifndef FI_PROBES_PRINT_PJL_PCL_H_
#define FI_PROBES_PRINT_PJL_PCL_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatPcl or kNoMatch.
FormatId PclProbe(IdentificationStream* stream);

// kFormatPjlJob or kNoMatch.
FormatId PjlProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_PRINT_PJL_PCL_H_
