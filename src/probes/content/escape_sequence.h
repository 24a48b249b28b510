// Documents of a kind that is not publicly known, which begin with a printer command: ESC [ 1 $ K.
#ifndef FI_PROBES_CONTENT_ESCAPE_SEQUENCE_H_
#define FI_PROBES_CONTENT_ESCAPE_SEQUENCE_H_

#include "engine/id_stream.h"
#include "formatid/formatid.h"

namespace fi {

// 1019 or kNoMatch.
FormatId EscapeSequenceProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_CONTENT_ESCAPE_SEQUENCE_H_
