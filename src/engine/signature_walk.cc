#include "engine/signature_walk.h"

#include <algorithm>
#include <bit>
#include <cstddef>

#include "engine/signature_table.h"
#include "engine/supplement_table.h"
#include "formatid/platform.h"

namespace fi {
namespace {

constexpr size_t kNoFirstByte = 256;

WalkResult Match(FormatId id, size_t row) { return {id, static_cast<uint16_t>(row + 1)}; }

// What a row does that fails at the file's first byte.
uint32_t ReadFirstByte(IdentificationStream* stream) {
  return MoveTo(stream, 0) ? IdStreamGetByte(stream) : kEndOfData;
}

template <class Table, size_t kRows>
WalkResult Walk(const Table& table, const SignatureIndex<kRows>& index, SignatureRun& run) {
  const auto runRow = [&](size_t row) {
    return RunProgram(table.bytes.data() + table.starts[row], run);
  };
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

template <class Table>
uint16_t Basis(const Table& table, uint16_t row) {
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

}  // namespace

WalkResult WalkSignatures(SignatureRun& run) { return Walk(kSignatureTable, kSignatureIndex, run); }

uint16_t BasisOfRow(uint16_t row) { return Basis(kSignatureTable, row); }

WalkResult WalkSupplement(SignatureRun& run) {
  return Walk(kSupplementTable, kSupplementIndex, run);
}

uint16_t BasisOfSupplementRow(uint16_t row) { return Basis(kSupplementTable, row); }

}  // namespace fi
