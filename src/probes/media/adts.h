// Streams of AAC audio (ADTS, ISO/IEC 13818-7): frames one after the other, each with a header of
// seven bytes that holds its length.
#ifndef FI_PROBES_MEDIA_ADTS_H_
#define FI_PROBES_MEDIA_ADTS_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatAac or kNoMatch.
FormatId AdtsProbe(IdentificationStream* stream);

// Whether several frames of one kind stand at `at`.
bool HasAdtsFrames(IdentificationStream* stream, int64_t at);

}  // namespace fi

#endif  // FI_PROBES_MEDIA_ADTS_H_
