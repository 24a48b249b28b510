// Programs of DOS and Windows: the header of DOS with the size of the program, and the place of the
// header of a newer form behind it.
#ifndef FI_PROBES_SYSTEM_DOS_EXECUTABLE_H_
#define FI_PROBES_SYSTEM_DOS_EXECUTABLE_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatExecutable or kNoMatch. REQUIRES: the two letters at the start have matched.
FormatId DosExecutableProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_SYSTEM_DOS_EXECUTABLE_H_
