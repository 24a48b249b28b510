// ID3v2 tags (id3.org, versions 2.2 to 2.4): ten bytes with a version and a size, which stand with
// their frames before the audio data.
#ifndef FI_PROBES_MEDIA_ID3V2_H_
#define FI_PROBES_MEDIA_ID3V2_H_

#include <cstdint>

#include "stream/id_stream.h"

namespace fi {

// Offset of what follows the tags and the padding at the start of the file; 0 when there is no tag.
// What it answers may lie beyond the end of the file.
int64_t Id3v2End(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_MEDIA_ID3V2_H_
