// Data for printers: jobs in PJL begin with the universal exit sequence and the first command, PCL
// with a reset and another escape sequence.
#ifndef FI_PROBES_CONTENT_PRINTER_DATA_H_
#define FI_PROBES_CONTENT_PRINTER_DATA_H_

#include "engine/id_stream.h"
#include "formatid/formatid.h"

namespace fi {

// kFormatPcl or kNoMatch.
FormatId PclProbe(IdentificationStream* stream);

// kFormatPjlJob or kNoMatch.
FormatId PjlProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_CONTENT_PRINTER_DATA_H_
