#include "run/text/utf8.h"

#include <algorithm>
#include <iterator>

namespace fi::app {
namespace {

uint8_t ByteAt(std::string_view bytes, size_t index) { return static_cast<uint8_t>(bytes[index]); }

}  // namespace

size_t Utf8SequenceLength(std::string_view bytes) {
  if (bytes.empty()) return 0;
  const uint8_t lead = ByteAt(bytes, 0);
  if (lead < 0x80) return 1;
  if (lead < 0xC2 || lead > 0xF4) return 0;
  const size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (bytes.size() < length) return 0;
  for (size_t i = 1; i < length; ++i) {
    if ((ByteAt(bytes, i) & 0xC0) != 0x80) return 0;
  }
  const uint8_t second = ByteAt(bytes, 1);
  if (lead == 0xE0 && second < 0xA0) return 0;  // overlong
  if (lead == 0xED && second > 0x9F) return 0;  // surrogate
  if (lead == 0xF0 && second < 0x90) return 0;  // overlong
  if (lead == 0xF4 && second > 0x8F) return 0;  // past the last code point
  return length;
}

bool IsUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const size_t length = Utf8SequenceLength(bytes);
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

uint32_t CodePoint(std::string_view sequence) {
  const uint32_t lead = ByteAt(sequence, 0);
  if (sequence.size() == 1) return lead;
  uint32_t point = lead & (0x7Fu >> sequence.size());
  for (const char c : sequence.substr(1)) point = point << 6 | (static_cast<uint8_t>(c) & 0x3F);
  return point;
}

bool IsDeceptive(std::string_view sequence) {
  // Soft hyphen, Arabic letter mark, Hangul fillers, Mongolian vowel separator and variation
  // selectors, zero widths and marks, separators and embeddings, invisible operators and isolates,
  // variation selectors, byte-order mark, interlinear annotations, tags.
  struct Range {
    uint32_t first, last;
  };
  constexpr Range kRanges[] = {{0xAD, 0xAD},     {0x61C, 0x61C},   {0x115F, 0x1160},
                               {0x180B, 0x180F}, {0x200B, 0x200F}, {0x2028, 0x202E},
                               {0x2060, 0x206F}, {0x3164, 0x3164}, {0xFEFF, 0xFEFF},
                               {0xFFA0, 0xFFA0}, {0xFFF9, 0xFFFB}, {0xE0000, 0xE0FFF}};
  if (sequence.size() < 2) return false;
  const uint32_t point = CodePoint(sequence);
  return std::any_of(std::begin(kRanges), std::end(kRanges), [point](const Range& range) {
    return point >= range.first && point <= range.last;
  });
}

bool IsControl(std::string_view sequence) {
  if (sequence.size() == 1) return ByteAt(sequence, 0) < 0x20 || sequence[0] == 0x7F;
  return sequence.size() == 2 && ByteAt(sequence, 0) == 0xC2 && ByteAt(sequence, 1) < 0xA0;
}

}  // namespace fi::app
