// Macintosh pictures without the 512 bytes that applications may put before them: a size, a frame
// and a version opcode, all in big-endian words.
#ifndef FI_PROBES_IMAGE_PICT_H_
#define FI_PROBES_IMAGE_PICT_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatPictBare or kNoMatch.
FormatId PictHeaderProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_IMAGE_PICT_H_
