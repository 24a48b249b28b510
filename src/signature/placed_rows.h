// Rows that begin at a fixed place behind the start, selected by the byte at that place: which of
// them can match a file. One pass over the places serves all such rows of the table; it runs when
// the walk reaches the first of them.
//
// The walk with places keeps the answers of the plain walk, but not the positions that its programs
// find the stream at. REQUIRES: each program of the table begins by moving the stream, or hands
// over to a probe that does.
#ifndef FI_SIGNATURE_PLACED_ROWS_H_
#define FI_SIGNATURE_PLACED_ROWS_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "signature/interpreter.h"
#include "signature/opcodes.h"
#include "signature/signature_index.h"
#include "signature/signature_walk.h"
#include "stream/id_stream.h"

namespace fi {

// Not defined: to reach it while a table is indexed ends the compilation.
void SignaturePlacesAreTooMany();

template <size_t kRows>
struct PlacedRows {
  static constexpr size_t kMaxPlaces = 32;

  struct Place {
    uint32_t offset = 0;
    ByteSet bytes{};  // what the rows there begin with
    RowSet<kRows> rows{};
  };

  std::array<Place, kMaxPlaces> places{};  // by offset
  size_t count = 0;
  RowSet<kRows> all{};
  size_t first = kRows;  // the first row that begins at a place
};

// The place that a program begins at, or 0.
constexpr uint32_t PlaceOf(const uint8_t* program) {
  if (program[0] != kEscape || program[1] != kOpSeek) return 0;
  return program[2] | uint32_t{program[3]} << 8 | uint32_t{program[4]} << 16 |
         uint32_t{program[5]} << 24;
}

template <class Table>
consteval PlacedRows<Table::kRows> IndexPlaces(const Table& table) {
  constexpr size_t kSeekSize = 6;
  using Rows = PlacedRows<Table::kRows>;
  Rows index;
  for (size_t row = Table::kRows; row-- > 0;) {
    const uint8_t* program = table.bytes.data() + table.starts[row];
    const uint32_t offset = PlaceOf(program);
    const ByteTest test(program + kSeekSize);
    if (offset == 0 || !test.Exists()) continue;
    size_t at = 0;
    while (at < index.count && index.places[at].offset < offset) ++at;
    if (at == index.count || index.places[at].offset != offset) {
      if (index.count == Rows::kMaxPlaces) SignaturePlacesAreTooMany();
      std::move_backward(index.places.begin() + at, index.places.begin() + index.count,
                         index.places.begin() + index.count + 1);
      index.places[at] = {};
      index.places[at].offset = offset;
      ++index.count;
    }
    index.places[at].bytes.Add(test.Allowed());
    index.places[at].rows.Add(row);
    index.all.Add(row);
    index.first = row;
  }
  return index;
}

// The rows whose first byte stands at their place. Looks at places in the order of the file, and at
// none behind the first that the file does not reach.
template <size_t kRows>
RowSet<kRows> RowsOfPlaces(const PlacedRows<kRows>& index, IdentificationStream* stream) {
  RowSet<kRows> rows;
  for (size_t i = 0; i < index.count; ++i) {
    const auto& place = index.places[i];
    if (!MoveTo(stream, place.offset)) break;
    const uint32_t byte = IdStreamGetByte(stream);
    if (byte == kEndOfData) break;
    if (place.bytes.Has(byte)) rows.Add(place.rows);
  }
  return rows;
}

// Walks the rows that the first byte and the bytes at their places leave possible.
template <RowRun kRun = RunProgram, class Table, size_t kRows>
WalkResult WalkTableWithPlaces(const Table& table, const SignatureIndex<kRows>& index,
                               const PlacedRows<kRows>& placed, SignatureRun& run) {
  const size_t firstByte = std::min<size_t>(ReadFirstByte(run.stream), kNoFirstByte);
  RowSet<kRows> candidates = index.candidates[firstByte];
  for (size_t row = candidates.Next(0); row < kRows; row = candidates.Next(row + 1)) {
    if (row == placed.first) {
      candidates.Remove(placed.all);
      candidates.Add(RowsOfPlaces(placed, run.stream));
      if (!candidates.Has(row)) continue;
    }
    const FormatId id = kRun(table.bytes.data() + table.starts[row], run);
    if (id != kNoMatch) return Match(id, row);
  }
  return {};
}

}  // namespace fi

#endif  // FI_SIGNATURE_PLACED_ROWS_H_
