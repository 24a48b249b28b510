#include "probes/media/real_media.h"

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {

FormatId RealMediaProbe(IdentificationStream* stream) {
  constexpr uint32_t kSmallest = 10;
  constexpr uint32_t kLargest = 4096;
  constexpr uint32_t kSizeWithCount = 18;
  constexpr uint32_t kMaxHeaders = 1024;
  const FileBytes<kSizeWithCount> chunk(stream, 0);
  const uint32_t size = chunk.DwordBE(4);
  if (chunk.size() < kSmallest || size < kSmallest || size > kLargest) return kNoMatch;
  if (chunk.WordBE(8) > 1) return kNoMatch;
  if (size < kSizeWithCount) return kFormatRealMedia;
  const uint32_t headers = chunk.DwordBE(14);
  return headers >= 1 && headers <= kMaxHeaders ? kFormatRealMedia : kNoMatch;
}

}  // namespace fi
