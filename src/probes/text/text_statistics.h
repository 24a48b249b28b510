// Counts over the head of a file that tell text from binary data, in loops over fixed blocks that a
// compiler turns into vector code.
#ifndef FI_PROBES_TEXT_TEXT_STATISTICS_H_
#define FI_PROBES_TEXT_TEXT_STATISTICS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace fi {

using Bytes = std::span<const uint8_t>;

// BEL BS TAB LF VT FF CR: the controls that lay out text.
constexpr bool IsLayout(uint8_t byte) { return static_cast<uint8_t>(byte - 7) < 7; }

// A control that text has no use for; ESC is not one, since it begins terminal and ISO 2022 codes.
constexpr bool IsControl(uint8_t byte) {
  constexpr uint8_t kEscape = 27;
  constexpr uint8_t kDelete = 127;
  return ((byte < 32) & !IsLayout(byte) & (byte != kEscape)) | (byte == kDelete);
}

struct ByteCounts {
  bool hasNul = false;   // counting stopped in the block of the first NUL
  uint32_t control = 0;  // bytes for which IsControl holds
  uint32_t high = 0;     // 128 and above
  size_t ascii = 0;      // bytes at the start among which no high one is, in whole blocks
};

// Counts over `text` up to the first block that holds a NUL.
ByteCounts CountBytes(Bytes text);

// Whether no UTF-8 sequence in `text` is broken: overlong forms, surrogates and values above
// U+10FFFF count as broken, and so does a sequence that the end cuts off, unless `cut` says that
// the file goes on there.
bool IsValidUtf8(Bytes text, bool cut);

// How often each byte value occurs.
using Histogram = std::array<uint32_t, 256>;
Histogram CountValues(Bytes text);

}  // namespace fi

#endif  // FI_PROBES_TEXT_TEXT_STATISTICS_H_
