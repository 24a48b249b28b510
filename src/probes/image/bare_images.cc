#include "probes/image/bare_images.h"

#include <cstdint>

#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr size_t kTargaHeader = 18;

bool IsDepth(uint32_t bits) { return bits == 15 || bits == 16 || bits == 24 || bits == 32; }

// Kinds 1 and 9 take their colours from a map, 2 and 10 hold them, 3 and 11 are grey; the second of
// each is compressed.
bool FitsTargaKind(uint32_t kind, bool hasMap, uint32_t depth) {
  switch (kind) {
    case 1:
    case 9:
      return hasMap && (depth == 8 || depth == 15 || depth == 16);
    case 2:
    case 10:
      return IsDepth(depth);
    case 3:
    case 11:
      return depth == 8 || depth == 16;
    default:
      return false;
  }
}

// A number of seven bits a byte at `*at`; 0 where it is longer than 28 bits.
uint32_t SevenBits(const FileBytes<16>& head, size_t* at) {
  uint32_t value = 0;
  for (int i = 0; i < 4; ++i) {
    const uint8_t byte = head.Byte((*at)++);
    value = value << 7 | (byte & 0x7F);
    if (byte < 0x80) return value;
  }
  return 0;
}

}  // namespace

bool MayBeTarga(IdentificationStream* stream) {
  constexpr uint8_t kInterleaved = 0xC0;  // two bits that no writer sets
  const FileBytes<kTargaHeader> head(stream, 0);
  const uint32_t map = head.Byte(1);
  if (head.size() < kTargaHeader || map > 1 || (head.Byte(17) & kInterleaved) != 0) return false;
  const uint32_t entry = head.Byte(7);
  if (map == 1 && (head.WordLE(5) == 0 || (entry != 8 && !IsDepth(entry)))) return false;
  const bool hasPixels = head.WordLE(12) != 0 && head.WordLE(14) != 0;
  return hasPixels && FitsTargaKind(head.Byte(2), map == 1, head.Byte(16));
}

bool MayBeWirelessBitmap(IdentificationStream* stream) {
  const FileBytes<16> head(stream, 0);
  size_t at = 2;
  const uint64_t width = SevenBits(head, &at);
  const uint64_t height = SevenBits(head, &at);
  if (head.WordBE(0) != 0 || width == 0 || height == 0) return false;
  return FileSize(stream) == at + (width + 7) / 8 * height;
}

}  // namespace fi
