#include "probes/archive/zstandard.h"

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {

FormatId ZstandardProbe(IdentificationStream* stream) {
  constexpr uint32_t kZstandard = 0xFD2FB528;
  constexpr uint32_t kLz4 = 0x184D2204;
  constexpr uint32_t kSkippable = 0x184D2A50;  // to ..5F
  constexpr uint32_t kSkippableMask = 0xFFFFFFF0;
  constexpr uint8_t kReservedBit = 0x08;
  constexpr int64_t kSkippableHeader = 8;
  constexpr uint32_t kMaxSkipped = 4;
  int64_t at = 0;
  for (uint32_t i = 0; i <= kMaxSkipped; ++i) {
    const FileBytes<8> frame(stream, at);
    const uint32_t magic = frame.DwordLE(0);
    if (magic == kZstandard) {
      return frame.Has(4, 1) && (frame.Byte(4) & kReservedBit) == 0 ? kFormatZstandard : kNoMatch;
    }
    if (magic == kLz4 && i > 0) return kFormatLz4;
    if ((magic & kSkippableMask) != kSkippable || frame.size() < kSkippableHeader) return kNoMatch;
    at += kSkippableHeader + frame.DwordLE(4);
  }
  return kNoMatch;
}

}  // namespace fi
