#include "probes/media/matroska.h"

#include <algorithm>
#include <bit>
#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr uint32_t kEbmlHeader = 0x1A45DFA3;
constexpr uint64_t kDocType = 0x4282;

// Headers hold a few dozen bytes, padding aside.
constexpr size_t kMaxHeader = 256;

using Header = FileBytes<kMaxHeader>;

// Reads a number of 1 to `longest` bytes, of which the leading zeros of the first tell how many,
// and moves `pos` behind it. The bit that ends these zeros is part of an identifier, but not of a
// size.
bool ReadNumber(const Header& header, size_t longest, bool isSize, size_t& pos, uint64_t& value) {
  const uint8_t first = header.Byte(pos);
  const auto length = static_cast<size_t>(std::countl_zero(first)) + 1;
  if (length > longest || !header.Has(pos, length)) return false;
  value = isSize ? first & (0xFFu >> length) : first;
  for (size_t i = 1; i < length; ++i) value = value << 8 | header.Byte(pos + i);
  pos += length;
  return true;
}

FormatId IdOfType(std::string_view type) {
  type = type.substr(0, type.find('\0'));
  if (type == "matroska") return kFormatMatroska;
  return type == "webm" ? kFormatWebM : kNoMatch;
}

}  // namespace

FormatId MatroskaProbe(IdentificationStream* stream) {
  const Header header(stream, 0);
  if (header.DwordBE(0) != kEbmlHeader) return kNoMatch;
  size_t pos = 4;
  uint64_t size = 0;
  if (!ReadNumber(header, 8, true, pos, size)) return kNoMatch;
  const size_t end = pos + static_cast<size_t>(std::min<uint64_t>(size, header.size() - pos));
  while (pos < end) {
    uint64_t id = 0;
    if (!ReadNumber(header, 4, false, pos, id) || !ReadNumber(header, 8, true, pos, size)) break;
    if (pos > end || size > end - pos) break;
    if (id == kDocType) return IdOfType(header.View().substr(pos, static_cast<size_t>(size)));
    pos += static_cast<size_t>(size);
  }
  return kNoMatch;
}

}  // namespace fi
