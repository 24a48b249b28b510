#include "probes/image/tga.h"

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {

FormatId TgaProbe(IdentificationStream* stream) {
  constexpr size_t kHeaderSize = 18;
  constexpr uint8_t kTrueColour = 2;
  constexpr uint8_t kReservedBits = 0xC0;
  const FileBytes<kHeaderSize> header(stream, 0);
  if (header.size() < kHeaderSize || header.Byte(1) != 0 || header.Byte(2) != kTrueColour) {
    return kNoMatch;
  }
  // Without a colour map its description is empty.
  if (header.Byte(3) != 0 || header.DwordLE(4) != 0) return kNoMatch;
  const uint32_t depth = header.Byte(16);
  if (depth != 16 && depth != 24 && depth != 32) return kNoMatch;
  if ((header.Byte(17) & kReservedBits) != 0) return kNoMatch;
  const uint64_t pixels = uint64_t{header.WordLE(12)} * header.WordLE(14);
  if (pixels == 0) return kNoMatch;
  const uint64_t needed = kHeaderSize + header.Byte(0) + pixels * (depth / 8);
  return needed <= FileSize(stream) ? kFormatTga : kNoMatch;
}

}  // namespace fi
