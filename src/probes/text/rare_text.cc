#include "probes/text/rare_text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <iterator>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"
#include "stream/text_view.h"

namespace fi {
namespace {

using Head = FileBytes<2048>;

// Whether the four bytes are a character of Unicode, and no control but a line end or a blank.
bool IsCharacter(uint32_t unit) {
  if (unit < 0x20) return unit >= '\t' && unit <= '\r';
  return unit < 0x110000 && (unit < 0xD800 || unit > 0xDFFF);
}

bool IsUtf32(const Head& head, bool isBigEndian) {
  constexpr size_t kLeastUnits = 4;
  const size_t units = head.size() / 4;
  if (units < kLeastUnits || head.size() % 4 != 0) return false;
  for (size_t i = 0; i < units; ++i) {
    if (!IsCharacter(isBigEndian ? head.DwordBE(4 * i) : head.DwordLE(4 * i))) return false;
  }
  return true;
}

// UTF-16 whose characters are of one script: ASCII aside, most share one of two high bytes, or all
// are East Asian. Data of eight such units by chance are one in millions.
bool IsUtf16(const Head& head, bool isBigEndian) {
  constexpr uint32_t kLeastUnits = 8;
  std::array<uint16_t, 256> blocks{};
  uint32_t wide = 0;
  uint32_t eastAsian = 0;
  uint32_t lettersOfAscii = 0;
  const auto units = static_cast<uint32_t>(head.size() / 2);
  if (head.size() % 2 != 0 || units < kLeastUnits) return false;
  for (size_t i = 0; i < units; ++i) {
    const uint32_t unit = isBigEndian ? head.WordBE(2 * i) : head.WordLE(2 * i);
    const uint32_t high = unit >> 8;
    const bool isPrivate = high >= 0xD8 && high <= 0xF8;  // surrogates, private use
    if (isPrivate || unit >= 0xFFF0 || !IsCharacter(unit)) return false;
    if (unit < 0x80) continue;
    ++wide;
    ++blocks[high];
    if ((high >= 0x4E && high <= 0x9F) || high == 0x30 || high == 0xFF) ++eastAsian;
    if (IsPlain(static_cast<char>(high)) && IsPlain(static_cast<char>(unit & 0x7F))) {
      ++lettersOfAscii;
    }
  }
  if (wide < kLeastUnits || lettersOfAscii * 2 > wide) return false;
  std::partial_sort(blocks.begin(), blocks.begin() + 2, blocks.end(), std::greater<>());
  const bool isOneScript = (blocks[0] + blocks[1]) * 10U >= wide * 9;
  return isOneScript || (eastAsian == wide && wide >= 2 * kLeastUnits);
}

// Characters of two bytes, of which the encodings allow these first and second ones.
struct DoubleBytes {
  uint8_t first;
  uint8_t last;
  uint8_t otherFirst;  // a second range of first bytes, or the same
  uint8_t otherLast;
  uint8_t second;  // second bytes from here to FE, but for 7F
  uint32_t least;  // characters
};

constexpr DoubleBytes kEncodings[] = {
    {0xA1, 0xFE, 0xA1, 0xFE, 0xA1, 6},   // EUC, GB 2312
    {0x81, 0x9F, 0xE0, 0xFC, 0x40, 10},  // Shift-JIS
    {0xA1, 0xF9, 0xA1, 0xF9, 0x40, 10},  // Big5
};

bool IsDoubleByteText(const Head& head, const DoubleBytes& encoding) {
  uint32_t characters = 0;
  for (size_t i = 0; i < head.size(); ++i) {
    const uint8_t byte = head.Byte(i);
    if (IsPlain(static_cast<char>(byte))) continue;
    const bool isFirst = (byte >= encoding.first && byte <= encoding.last) ||
                         (byte >= encoding.otherFirst && byte <= encoding.otherLast);
    if (!isFirst) return false;
    if (++i == head.size()) break;  // cut by the window, or by the end
    const uint8_t second = head.Byte(i);
    if (second < encoding.second || second == 0x7F || second == 0xFF) return false;
    ++characters;
  }
  return characters >= encoding.least;
}

// A word or a few in an 8-bit code page: letters in lower case, but for the first of a word, and
// few letters above ASCII.
bool IsShortText(const Head& head) {
  constexpr size_t kMost = 128;
  constexpr uint32_t kLeastLetters = 3;
  constexpr uint8_t kFirstAccent = 0xC0;
  if (head.size() > kMost) return false;
  uint32_t letters = 0;
  uint32_t accents = 0;
  bool inWord = false;
  for (const char c : head.View()) {
    const bool isAccent = static_cast<uint8_t>(c) >= kFirstAccent;
    if (!isAccent && !IsPlain(c)) return false;
    if (inWord && IsUpper(c)) return false;
    inWord = isAccent || IsLetter(c);
    if (IsLetter(c)) ++letters;
    if (isAccent) ++accents;
  }
  return letters >= kLeastLetters && accents * 3 <= letters &&
         (letters + accents) * 4 >= head.size() * 3;
}

}  // namespace

bool IsMarkedUtf32(IdentificationStream* stream) {
  const FileBytes<8> head(stream, 0);
  return head.Has(0, 8) && head.DwordLE(0) == 0xFEFF && IsCharacter(head.DwordLE(4));
}

FormatId RareTextProbe(IdentificationStream* stream) {
  const Head head(stream, 0);
  if (IsUtf32(head, true) || IsUtf32(head, false)) return kFormatPlainUtf32Text;
  if (IsUtf16(head, true) || IsUtf16(head, false)) return kFormatPlainUtf16Text;
  const bool isDoubleByte = std::any_of(
      std::begin(kEncodings), std::end(kEncodings),
      [&head](const DoubleBytes& encoding) { return IsDoubleByteText(head, encoding); });
  return isDoubleByte || IsShortText(head) ? kFormatPlainCodePageText : kNoMatch;
}

}  // namespace fi
