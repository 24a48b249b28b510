#include "probes/archive/arj.h"

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {

FormatId ArjProbe(IdentificationStream* stream) {
  constexpr uint32_t kMark = 0xEA60;
  constexpr uint32_t kShortestHeader = 30;
  constexpr uint32_t kLongestHeader = 2600;
  constexpr uint32_t kLongestFixedPart = 60;
  constexpr uint8_t kMainHeader = 2;
  const FileBytes<11> header(stream, 0);
  const uint32_t size = header.WordLE(2);
  const uint32_t fixedPart = header.Byte(4);
  const bool matches = header.WordLE(0) == kMark && size >= kShortestHeader &&
                       size <= kLongestHeader && fixedPart >= kShortestHeader &&
                       fixedPart <= kLongestFixedPart && fixedPart <= size &&
                       header.Byte(10) == kMainHeader;
  return matches ? kFormatArj : kNoMatch;
}

}  // namespace fi
