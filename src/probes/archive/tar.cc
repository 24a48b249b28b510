#include "probes/archive/tar.h"

#include <cstddef>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr size_t kHeaderSize = 512;
constexpr size_t kSumOffset = 148;
constexpr size_t kSumSize = 8;

using Header = FileBytes<kHeaderSize>;

// Reads blanks, octal digits, and then NULs or blanks up to the end of the field.
bool ReadSum(const Header& header, uint32_t& sum) {
  size_t at = kSumOffset;
  constexpr size_t kEnd = kSumOffset + kSumSize;
  while (at < kEnd && header.Byte(at) == ' ') ++at;
  const size_t first = at;
  sum = 0;
  for (; at < kEnd && header.Byte(at) >= '0' && header.Byte(at) <= '7'; ++at) {
    sum = sum * 8 + (header.Byte(at) - uint32_t{'0'});
  }
  if (at == first) return false;
  while (at < kEnd && (header.Byte(at) == 0 || header.Byte(at) == ' ')) ++at;
  return at == kEnd;
}

}  // namespace

FormatId TarProbe(IdentificationStream* stream) {
  const FileBytes<1> name(stream, 0);
  if (name.Byte(0) == 0) return kNoMatch;
  const FileBytes<kSumSize> field(stream, kSumOffset);
  // Nearly every file ends here: the field holds digits and blanks or NULs only.
  for (size_t i = 0; i < kSumSize; ++i) {
    const uint8_t byte = field.Byte(i);
    if (byte != 0 && byte != ' ' && (byte < '0' || byte > '7')) return kNoMatch;
  }
  const Header header(stream, 0);
  uint32_t expected = 0;
  if (header.size() < kHeaderSize || !ReadSum(header, expected)) return kNoMatch;
  // The field itself counts as blanks. Some old writers took bytes for signed.
  uint32_t sum = kSumSize * ' ';
  uint32_t high = 0;
  for (size_t i = 0; i < kHeaderSize; ++i) {
    if (i >= kSumOffset && i < kSumOffset + kSumSize) continue;
    sum += header.Byte(i);
    if (header.Byte(i) >= 0x80) ++high;
  }
  const uint32_t signedSum = sum - high * 256;
  return sum == expected || signedSum == expected ? kFormatTar : kNoMatch;
}

}  // namespace fi
