// Runs the programs of a table in order until one yields an identifier.
#ifndef FI_SIGNATURE_SIGNATURE_WALK_H_
#define FI_SIGNATURE_SIGNATURE_WALK_H_

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>

#include "formatid/formatid.h"
#include "formatid/platform.h"
#include "platform/trace.h"
#include "signature/interpreter.h"
#include "signature/row_text.h"
#include "signature/signature_encoder.h"
#include "signature/signature_index.h"

namespace fi {

struct WalkResult {
  FormatId id = kNoMatch;
  uint16_t row = 0;  // number of the deciding row from 1; 0: none
};

// How a walk runs a row: as RunProgram does.
using RowRun = FormatId (*)(const uint8_t* program, SignatureRun& run);

inline constexpr size_t kNoFirstByte = 256;

inline WalkResult Match(FormatId id, size_t row) { return {id, static_cast<uint16_t>(row + 1)}; }

// What a row does that fails at the file's first byte.
inline uint32_t ReadFirstByte(IdentificationStream* stream) {
  return MoveTo(stream, 0) ? IdStreamGetByte(stream) : kEndOfData;
}

// Walks the rows that the first byte leaves possible. The answer, and the position that each
// program finds the stream at, are those of a walk over every row.
template <RowRun kRun = RunProgram, class Table, size_t kRows>
WalkResult WalkTable(const Table& table, const SignatureIndex<kRows>& index, SignatureRun& run) {
  const auto runRow = [&](size_t row) { return kRun(table.bytes.data() + table.starts[row], run); };
  if (run.isStorage) {
    for (size_t row = 0; row < index.classRows; ++row) {
      if (const FormatId id = runRow(row); id != kNoMatch) return Match(id, row);
    }
  }
  const size_t firstByte = std::min<size_t>(ReadFirstByte(run.stream), kNoFirstByte);
  const auto& candidates = index.candidates[firstByte];
  size_t next = index.classRows;  // the first row that neither ran nor was skipped
  for (size_t word = 0; word < RowSet<kRows>::kWords; ++word) {
    for (uint64_t bits = candidates.Word(word); bits != 0; bits &= bits - 1) {
      const size_t row = word * 64 + static_cast<size_t>(std::countr_zero(bits));
      if (!index.gated.Has(row) && index.behindGated[row] > next) (void)ReadFirstByte(run.stream);
      if (const FormatId id = runRow(row); id != kNoMatch) return Match(id, row);
      next = row + 1;
    }
  }
  return {};
}

// Tells the trace of the identification which row of the table matched, if any did.
template <class Table>
void TellRow(const Table& table, const WalkResult& match, uint32_t number,
             const SignatureRun& run) {
  const Work* work = run.stream->job->work;
  if (match.id == kNoMatch || work == nullptr || work->trace == nullptr) return;
  const std::string text = RowText(table.bytes.data() + table.starts[match.row - 1]);
  Tell(work, {.kind = kFiTraceRow,
              .text = text.c_str(),
              .id = match.id,
              .row = match.row,
              .number = number});
}

// What an answer of that row rests on: one of the kFiBasis values.
// REQUIRES: row is the number of a row, from 1.
template <class Table>
uint16_t BasisOfTableRow(const Table& table, uint16_t row) {
  const uint8_t* program = table.bytes.data() + table.starts[row - 1];
  const uint8_t* last = table.bytes.data() + ResultOf(table, row - 1);
  if (last[1] == kOpProbe) return kFiBasisContent;
  switch (program[1]) {
    case kOpClass:
      return kFiBasisClass;
    case kOpRootName:
      return kFiBasisNamespace;
    case kOpExtension: {
      const uint8_t* behind = program + 3 + program[2];
      return behind == last ? kFiBasisExtension : kFiBasisSignature;
    }
    default:
      return kFiBasisSignature;
  }
}

}  // namespace fi

#endif  // FI_SIGNATURE_SIGNATURE_WALK_H_
