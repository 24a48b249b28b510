// Documents of a kind that is not publicly known, which begin with a printer command: ESC [ 1 $ K.
#ifndef FI_PROBES_UNIDENTIFIED_ESCAPE_SEQUENCE_H_
#define FI_PROBES_UNIDENTIFIED_ESCAPE_SEQUENCE_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// 1019 or kNoMatch.
FormatId EscapeSequenceProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_UNIDENTIFIED_ESCAPE_SEQUENCE_H_
