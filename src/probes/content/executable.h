// Programs of DOS and Windows: the header of DOS with the size of the program, and the place of the
// header of a newer form behind it.
#ifndef FI_PROBES_CONTENT_EXECUTABLE_H_
#define FI_PROBES_CONTENT_EXECUTABLE_H_

#include "engine/id_stream.h"
#include "formatid/formatid.h"

namespace fi {

// kFormatExecutable or kNoMatch. REQUIRES: the two letters at the start have matched.
FormatId ExecutableProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_CONTENT_EXECUTABLE_H_
