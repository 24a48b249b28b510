#include "toolkit/text/utf16.h"

#include <cstdint>

namespace fi {
namespace {

constexpr uint32_t kReplacement = 0xFFFD;
constexpr uint32_t kFirstSupplementary = 0x10000;
constexpr uint32_t kLast = 0x10FFFF;

// Bytes in the sequence that `lead` begins; 0 for a byte that begins none.
size_t SequenceSize(uint8_t lead) {
  if (lead < 0x80) return 1;
  if (lead < 0xC2) return 0;
  if (lead < 0xE0) return 2;
  if (lead < 0xF0) return 3;
  return lead < 0xF5 ? 4 : 0;
}

// REQUIRES: at < text.size(). Moves behind the character.
uint32_t NextCharacter(std::string_view text, size_t* at) {
  const auto lead = static_cast<uint8_t>(text[(*at)++]);
  const size_t size = SequenceSize(lead);
  if (size == 1) return lead;
  if (size == 0) return kReplacement;
  uint32_t character = lead & (0x7Fu >> size);
  for (size_t i = 1; i < size; ++i) {
    if (*at == text.size()) return kReplacement;
    const auto byte = static_cast<uint8_t>(text[*at]);
    if ((byte & 0xC0) != 0x80) return kReplacement;
    character = character << 6 | (byte & 0x3F);
    ++*at;
  }
  return character <= kLast ? character : kReplacement;
}

bool IsHighSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
bool IsLowSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

size_t PutUtf8(uint32_t character, char* bytes) {
  if (character < 0x80) {
    bytes[0] = static_cast<char>(character);
    return 1;
  }
  const size_t size = character < 0x800 ? 2 : character < kFirstSupplementary ? 3 : 4;
  for (size_t i = size - 1; i > 0; --i) {
    bytes[i] = static_cast<char>(0x80 | (character & 0x3F));
    character >>= 6;
  }
  bytes[0] = static_cast<char>((0xF0u << (4 - size)) | character);
  return size;
}

}  // namespace

size_t WidenUtf8(std::string_view utf8, char16_t* out, size_t capacity) {
  size_t units = 0;
  for (size_t at = 0; at < utf8.size() && units < capacity;) {
    const uint32_t character = NextCharacter(utf8, &at);
    if (character < kFirstSupplementary) {
      out[units++] = static_cast<char16_t>(character);
      continue;
    }
    if (capacity - units < 2) break;
    const uint32_t offset = character - kFirstSupplementary;
    out[units++] = static_cast<char16_t>(0xD800 | (offset >> 10));
    out[units++] = static_cast<char16_t>(0xDC00 | (offset & 0x3FF));
  }
  return units;
}

bool NarrowUtf16(std::u16string_view wide, char* out, size_t capacity, size_t* size) {
  size_t bytes = 0;
  for (size_t at = 0; at < wide.size(); ++at) {
    uint32_t character = wide[at];
    if (IsLowSurrogate(wide[at])) return false;
    if (IsHighSurrogate(wide[at])) {
      if (++at == wide.size() || !IsLowSurrogate(wide[at])) return false;
      character = kFirstSupplementary + ((character & 0x3FF) << 10 | (wide[at] & 0x3FFu));
    }
    char sequence[4];
    const size_t length = PutUtf8(character, sequence);
    if (length > capacity - bytes) return false;
    for (size_t i = 0; i < length; ++i) out[bytes++] = sequence[i];
  }
  *size = bytes;
  return true;
}

}  // namespace fi
