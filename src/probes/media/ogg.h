// Ogg files: pages that carry the packets of one or more logical streams. The first packet of a
// stream names its codec.
#ifndef FI_PROBES_MEDIA_OGG_H_
#define FI_PROBES_MEDIA_OGG_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// The identifier for the first audio and the first video codec of the file, kFormatOgg for any
// other Ogg file, or kNoMatch.
FormatId OggProbe(IdentificationStream* stream);

// The identifier for other codecs of an Ogg file, by its first packet: FLAC and Speex. kNoMatch for
// all else.
FormatId OtherOggCodecProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_MEDIA_OGG_H_
