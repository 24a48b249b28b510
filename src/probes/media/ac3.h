// AC-3 audio (ATSC A/52): frames one after the other, each with a sync word and a code from which
// its length follows.
#ifndef FI_PROBES_MEDIA_AC3_H_
#define FI_PROBES_MEDIA_AC3_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatAc3 or kNoMatch.
FormatId Ac3Probe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_MEDIA_AC3_H_
