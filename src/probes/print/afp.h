// Documents of the Advanced Function Presentation (MO:DCA Reference): structured fields, each of a
// byte 5A, a length, a type of three bytes, and flags.
#ifndef FI_PROBES_PRINT_AFP_H_
#define FI_PROBES_PRINT_AFP_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatAfp or kNoMatch.
FormatId AfpProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_PRINT_AFP_H_
