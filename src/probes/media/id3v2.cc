#include "probes/media/id3v2.h"

#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr int64_t kHeaderSize = 10;
constexpr uint32_t kMaxTags = 4;
constexpr uint32_t kMaxPadding = 4096;  // zeros that some writers leave outside the tag
constexpr uint8_t kHasFooter = 0x10;

// Bytes of the tag at `at`, its header included; 0 where there is none.
int64_t TagSize(IdentificationStream* stream, int64_t at) {
  const FileBytes<kHeaderSize> header(stream, at);
  const uint32_t version = header.Byte(3);
  if (header.size() < kHeaderSize || !header.Holds(0, "ID3") || version < 2 || version > 4) {
    return 0;
  }
  const uint32_t size = header.DwordBE(6);  // seven bits in each byte
  if ((size & 0x80808080) != 0) return 0;
  const int64_t frames =
      (size >> 24 << 21) | (size >> 16 & 0x7F) << 14 | (size >> 8 & 0x7F) << 7 | (size & 0x7F);
  return kHeaderSize + frames + ((header.Byte(5) & kHasFooter) != 0 ? kHeaderSize : 0);
}

}  // namespace

int64_t Id3v2End(IdentificationStream* stream) {
  int64_t end = 0;
  for (uint32_t i = 0; i < kMaxTags; ++i) {
    const int64_t size = TagSize(stream, end);
    if (size == 0) break;
    end += size;
  }
  if (end == 0 || IdStreamSeek(stream, end, kIoFromStart) != 0) return end;
  uint32_t zeros = 0;
  while (zeros < kMaxPadding && IdStreamGetByte(stream) == 0) ++zeros;
  return end + zeros;
}

}  // namespace fi
