// MPEG program streams (ISO/IEC 11172-1, 13818-1), which begin with a pack header, and video
// streams (ISO/IEC 11172-2, 13818-2), which begin with a sequence header.
#ifndef FI_PROBES_MEDIA_MPEG_STREAM_H_
#define FI_PROBES_MEDIA_MPEG_STREAM_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatMpegStream or kNoMatch. REQUIRES: the start code has matched.
FormatId MpegStreamProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_MEDIA_MPEG_STREAM_H_
