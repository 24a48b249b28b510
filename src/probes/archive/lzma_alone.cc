#include "probes/archive/lzma_alone.h"

#include <bit>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {

FormatId LzmaAloneProbe(IdentificationStream* stream) {
  constexpr size_t kHeaderSize = 13;
  constexpr uint8_t kUsualProperties = 0x5D;
  constexpr uint64_t kUnknownSize = ~uint64_t{0};
  constexpr uint64_t kSizeLimit = uint64_t{1} << 40;
  const FileBytes<kHeaderSize + 1> header(stream, 0);
  if (header.size() <= kHeaderSize || header.Byte(0) != kUsualProperties) return kNoMatch;
  // A power of two of at least 64 KB, or one and a half of it.
  const uint32_t dictionary = header.DwordLE(1);
  if (dictionary == 0 || (dictionary & 0xFFFF) != 0) return kNoMatch;
  const bool isPower = std::has_single_bit(dictionary);
  const bool isBetween = dictionary % 3 == 0 && std::has_single_bit(dictionary / 3);
  if (!isPower && !isBetween) return kNoMatch;
  const uint64_t size = header.DwordLE(5) | uint64_t{header.DwordLE(9)} << 32;
  if (size != kUnknownSize && size >= kSizeLimit) return kNoMatch;
  return header.Byte(kHeaderSize) == 0 ? kFormatLzma : kNoMatch;
}

}  // namespace fi
