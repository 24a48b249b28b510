// Which rows of a signature table can match a file at all, by its first byte. Most rows rewind and
// then test the first byte; when that test fails, the row has no other effect than to leave the
// stream behind the first byte. The walk skips those rows and reproduces that effect. It skips rows
// without any effect too.
#ifndef FI_SIGNATURE_SIGNATURE_INDEX_H_
#define FI_SIGNATURE_SIGNATURE_INDEX_H_

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "signature/opcodes.h"

namespace fi {

template <size_t kMembers>
class MemberSet {
 public:
  static constexpr size_t kWords = (kMembers + 63) / 64;

  constexpr void Add(size_t member) { words_[member / 64] |= uint64_t{1} << (member % 64); }
  constexpr bool Has(size_t member) const {
    return (words_[member / 64] >> (member % 64) & 1) != 0;
  }
  constexpr uint64_t Word(size_t index) const { return words_[index]; }

  constexpr void Add(const MemberSet& other) {
    for (size_t i = 0; i < kWords; ++i) words_[i] |= other.words_[i];
  }
  constexpr void Remove(const MemberSet& other) {
    for (size_t i = 0; i < kWords; ++i) words_[i] &= ~other.words_[i];
  }

  // The first member from that number on, or kMembers.
  constexpr size_t Next(size_t from) const {
    if (from >= kMembers) return kMembers;
    size_t index = from / 64;
    uint64_t word = words_[index] >> (from % 64) << (from % 64);
    while (word == 0) {
      if (++index == kWords) return kMembers;
      word = words_[index];
    }
    return index * 64 + static_cast<size_t>(std::countr_zero(word));
  }

 private:
  std::array<uint64_t, kWords> words_{};
};

template <size_t kRows>
using RowSet = MemberSet<kRows>;
using ByteSet = MemberSet<256>;

template <size_t kRows>
struct SignatureIndex {
  // Rows 0 up to this one test the class identifier of a storage first.
  size_t classRows = 0;
  // By first byte, the rows from classRows on that can match. The last set is for a first byte that
  // cannot be read: the file may be empty, or the handle recover.
  std::array<RowSet<kRows>, 257> candidates{};
  // Rows that rewind and test the first byte.
  RowSet<kRows> gated{};
  // For each row, the number of the nearest gated row before it plus one; 0 where there is none.
  std::array<uint16_t, kRows> behindGated{};
};

// What an instruction tests about the next byte.
class ByteTest {
 public:
  explicit constexpr ByteTest(const uint8_t* test) {
    const bool literal = test[0] != kEscape;
    const uint8_t* operands = test + 2;
    if (literal || test[1] == kOpLiteralEscape) {
      AllowRange(test[0], test[0]);
    } else if (test[1] == kOpOneOf) {
      AllowRange(operands[0], operands[0]);
      AllowRange(operands[1], operands[1]);
    } else if (test[1] == kOpByteRange && operands[0] > 0) {
      AllowRange(operands[1], operands[2]);
    } else if (test[1] == kOpNotByte) {
      AllowRange(0x00, 0xFF);
      ByteSet forbidden;
      forbidden.Add(operands[0]);
      allowed_.Remove(forbidden);
    }
  }

  constexpr bool Exists() const { return exists_; }
  constexpr const ByteSet& Allowed() const { return allowed_; }

 private:
  constexpr void AllowRange(size_t low, size_t high) {
    exists_ = true;
    for (size_t byte = low; byte <= high; ++byte) allowed_.Add(byte);
  }

  bool exists_ = false;
  ByteSet allowed_{};
};

constexpr bool BeginsWithRewind(const uint8_t* program) {
  return program[0] == kEscape && program[1] == kOpRewind;
}

constexpr bool BeginsWithClassTest(const uint8_t* program) {
  return program[0] == kEscape && program[1] == kOpClass;
}

// Whether the probe of that code never matches.
using IsUnansweredFunction = bool (*)(uint16_t code);

constexpr bool IsOnlyAnUnansweredProbe(const uint8_t* program, IsUnansweredFunction isUnanswered) {
  return program[0] == kEscape && program[1] == kOpProbe &&
         isUnanswered(static_cast<uint16_t>(program[2] | program[3] << 8));
}

template <size_t kRows, class Table>
consteval SignatureIndex<kRows> IndexTable(const Table& table, IsUnansweredFunction isUnanswered) {
  constexpr size_t kRewindSize = 2;
  SignatureIndex<kRows> index;
  const uint8_t* bytes = table.bytes.data();
  while (BeginsWithClassTest(bytes + table.starts[index.classRows])) ++index.classRows;
  uint16_t behindGated = 0;
  for (size_t row = index.classRows; row < kRows; ++row) {
    index.behindGated[row] = behindGated;
    if (IsOnlyAnUnansweredProbe(bytes + table.starts[row], isUnanswered)) continue;
    const uint8_t* program = bytes + table.starts[row];
    const ByteTest test(program + kRewindSize);
    const bool isGated = BeginsWithRewind(program) && test.Exists();
    for (size_t byte = 0; byte < 256; ++byte) {
      if (!isGated || test.Allowed().Has(byte)) index.candidates[byte].Add(row);
    }
    if (isGated) {
      index.gated.Add(row);
      behindGated = static_cast<uint16_t>(row + 1);
    }
    index.candidates[256].Add(row);
  }
  return index;
}

}  // namespace fi

#endif  // FI_SIGNATURE_SIGNATURE_INDEX_H_
