// Encodes the rows of a signature table (row_encoder.h) at compile time, and what is asserted of
// the result.
#ifndef FI_SIGNATURE_SIGNATURE_ENCODER_H_
#define FI_SIGNATURE_SIGNATURE_ENCODER_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "signature/opcodes.h"
#include "signature/row_alternatives.h"
#include "signature/row_encoder.h"

namespace fi {

// Not defined: to reach it while a table is encoded ends the compilation.
void SignatureTableIsTooLarge();

// Encoded programs and where each of them starts.
template <size_t kPrograms, size_t kCapacity>
struct EncodedTable {
  static constexpr size_t kRows = kPrograms;

  std::array<uint8_t, kCapacity> bytes{};
  std::array<uint16_t, kPrograms> starts{};
  size_t size = 0;

  constexpr void Put(uint32_t byte) {
    if (size == kCapacity) SignatureTableIsTooLarge();
    bytes[size++] = static_cast<uint8_t>(byte);
  }
};

template <size_t kRows>
consteval size_t ProgramsOf(const std::string_view (&rows)[kRows]) {
  size_t count = 0;
  for (const std::string_view row : rows) count += ProgramsOf(row);
  return count;
}

// Encodes `rows`. The end-of-entry marker closes each program, and the end-of-table marker follows
// the last.
template <size_t kPrograms, size_t kCapacity, size_t kRows>
consteval EncodedTable<kPrograms, kCapacity> EncodeTable(const std::string_view (&rows)[kRows]) {
  using Table = EncodedTable<kPrograms, kCapacity>;
  Table table;
  size_t program = 0;
  for (const std::string_view row : rows) {
    const size_t variants = ProgramsOf(row);
    for (size_t variant = 0; variant < variants; ++variant) {
      if (program == kPrograms) SignatureTableIsTooLarge();
      table.starts[program++] = static_cast<uint16_t>(table.size);
      RowEncoder<Table>(row, variant, table).Encode();
      table.Put(kEscape);
      table.Put(kOpEndOfEntry);
    }
  }
  table.Put(kEscape);
  table.Put(kOpEndOfTable);
  return table;
}

// The same table without the room behind its end.
template <size_t kSize, size_t kRows, size_t kCapacity>
consteval EncodedTable<kRows, kSize> Fitted(const EncodedTable<kRows, kCapacity>& table) {
  EncodedTable<kRows, kSize> fitted;
  std::copy_n(table.bytes.begin(), kSize, fitted.bytes.begin());
  fitted.starts = table.starts;
  fitted.size = kSize;
  return fitted;
}

// Sizes of an end marker, and of the return or probe that closes each program.
inline constexpr size_t kMarkerSize = 2;
inline constexpr size_t kResultSize = 4;

// Where the return or probe of a row begins.
template <size_t kRows, size_t kCapacity>
constexpr size_t ResultOf(const EncodedTable<kRows, kCapacity>& table, size_t row) {
  const size_t end = row + 1 < kRows ? table.starts[row + 1] : table.size - kMarkerSize;
  return end - kMarkerSize - kResultSize;
}

// Whether each row ends in a return or a probe, so that no program runs on into the next, and holds
// no marker that closes a row.
template <size_t kRows, size_t kCapacity>
consteval bool RowsAreWellFormed(const EncodedTable<kRows, kCapacity>& table) {
  for (size_t row = 0; row < kRows; ++row) {
    const size_t result = ResultOf(table, row);
    const uint8_t* last = table.bytes.data() + result;
    if (last[0] != kEscape || (last[1] != kOpReturn && last[1] != kOpProbe)) return false;
    for (size_t at = table.starts[row]; at + 1 < result + kResultSize; ++at) {
      if (table.bytes[at] == kEscape && table.bytes[at + 1] == kOpEndOfEntry) return false;
    }
  }
  return true;
}

}  // namespace fi

#endif  // FI_SIGNATURE_SIGNATURE_ENCODER_H_
