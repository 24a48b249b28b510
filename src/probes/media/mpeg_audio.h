// MPEG audio (ISO/IEC 11172-3, 13818-3): frames one after the other, each with a header of four
// bytes from which its length follows. The sync bits alone prove nothing; a chain of frames does.
#ifndef FI_PROBES_MEDIA_MPEG_AUDIO_H_
#define FI_PROBES_MEDIA_MPEG_AUDIO_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatMpegAudio, or kNoMatch. ID3v2 tags are skipped; a file that ends in an ID3v1 tag is left
// to the signature of these.
FormatId MpegAudioProbe(IdentificationStream* stream);

// For audio behind an ID3v2 tag too short or too damaged for the probe above, and for other streams
// behind such a tag: kFormatMpegAudioId3v2, kFormatAac, kFormatFlac or kNoMatch.
FormatId TaggedAudioProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_MEDIA_MPEG_AUDIO_H_
