#include "probes/text/text_statistics.h"

#include <algorithm>

namespace fi {
namespace {

// Bytes that are looked at together. A byte-wide counter holds one block, and the length, known to
// the compiler, lets it work on whole vector registers.
constexpr size_t kBlock = 128;

// Number of bytes in the block for which `holds`. A loop for each question stays simple enough for
// every compiler to vectorise.
template <typename Predicate>
uint8_t CountIn(const uint8_t* block, Predicate holds) {
  uint8_t count = 0;
  for (size_t i = 0; i < kBlock; ++i) {
    count = static_cast<uint8_t>(count + static_cast<uint8_t>(holds(block[i])));
  }
  return count;
}

// Printable ASCII and layout characters: all that nearly every block of text holds.
constexpr bool IsPlain(uint8_t byte) {
  return (static_cast<uint8_t>(byte - 32) < 95) | IsLayout(byte);
}

void CountBlock(const uint8_t* block, ByteCounts& counts) {
  if (CountIn(block, IsPlain) == kBlock) return;
  counts.hasNul = CountIn(block, [](uint8_t byte) { return byte == 0; }) != 0;
  counts.control += CountIn(block, IsControl);
  counts.high += CountIn(block, [](uint8_t byte) { return byte >= 128; });
}

// Whether the byte at `at` and the three before it can stand so in UTF-8; what follows is not
// asked. REQUIRES: three readable bytes before `at`.
inline uint8_t IsBrokenAt(const uint8_t* at) {
  const uint8_t byte = at[0];
  const uint8_t last = at[-1];
  const auto continues = static_cast<uint8_t>((byte & 0xC0) == 0x80);
  // A lead byte one, two or three places back asks for a continuation here, and nothing else may.
  const auto expected = static_cast<uint8_t>((last >= 0xC0) | (at[-2] >= 0xE0) | (at[-3] >= 0xF0));
  const auto noLead = static_cast<uint8_t>(((byte & 0xFE) == 0xC0) | (byte > 0xF4));
  const auto overlong =
      static_cast<uint8_t>(((last == 0xE0) & (byte < 0xA0)) | ((last == 0xF0) & (byte < 0x90)));
  const auto tooHigh =
      static_cast<uint8_t>(((last == 0xED) & (byte > 0x9F)) | ((last == 0xF4) & (byte > 0x8F)));
  return static_cast<uint8_t>((continues ^ expected) | noLead | overlong | tooHigh);
}

bool IsSequenceOpen(Bytes text) {
  const size_t size = text.size();
  return (size >= 1 && text[size - 1] >= 0xC0) || (size >= 2 && text[size - 2] >= 0xE0) ||
         (size >= 3 && text[size - 3] >= 0xF0);
}

}  // namespace

ByteCounts CountBytes(Bytes text) {
  ByteCounts counts;
  while (text.size() >= kBlock && !counts.hasNul) {
    CountBlock(text.data(), counts);
    if (counts.high == 0) counts.ascii += kBlock;
    text = text.subspan(kBlock);
  }
  if (counts.hasNul) return counts;
  std::array<uint8_t, kBlock> tail;
  tail.fill(' ');
  std::copy(text.begin(), text.end(), tail.begin());
  CountBlock(tail.data(), counts);
  return counts;
}

bool IsValidUtf8(Bytes text, bool cut) {
  // The first three bytes have fewer than three before them: they are checked behind ASCII.
  constexpr size_t kBefore = 3;
  std::array<uint8_t, 2 * kBefore> head{};
  const size_t headSize = std::min(text.size(), kBefore);
  std::copy_n(text.begin(), headSize, head.begin() + kBefore);
  uint8_t broken = 0;
  for (size_t i = 0; i < headSize; ++i) broken |= IsBrokenAt(head.data() + kBefore + i);

  size_t pos = headSize;
  for (; broken == 0 && text.size() - pos >= kBlock; pos += kBlock) {
    for (size_t i = 0; i < kBlock; ++i) broken |= IsBrokenAt(text.data() + pos + i);
  }
  for (; broken == 0 && pos < text.size(); ++pos) broken |= IsBrokenAt(text.data() + pos);
  return broken == 0 && (cut || !IsSequenceOpen(text));
}

Histogram CountValues(Bytes text) {
  // Two tables, so that a run of one value does not wait for its own last store.
  Histogram even{};
  Histogram odd{};
  size_t i = 0;
  for (; text.size() - i >= 2; i += 2) {
    ++even[text[i]];
    ++odd[text[i + 1]];
  }
  if (i < text.size()) ++even[text[i]];
  for (size_t value = 0; value < even.size(); ++value) even[value] += odd[value];
  return even;
}

}  // namespace fi
