// Signatures of formats beyond the fixed catalogue (signature_table.h): tried only on request, and
// only on what the catalogue leaves without a specific answer. Its rows may be added to and put in
// another order. The identifiers are 3000 to 3999, and those of the catalogue for its own formats
// where it misses them.
#ifndef FI_TABLES_SUPPLEMENT_TABLE_H_
#define FI_TABLES_SUPPLEMENT_TABLE_H_

#include <cstddef>
#include <cstdint>
#include <span>

#include "signature/signature_walk.h"

namespace fi {

// Walks this table, and tells what an answer of one of its rows rests on (signature_walk.h).
WalkResult WalkSupplement(SignatureRun& run);
WalkResult WalkSupplementTraced(SignatureRun& run);
uint16_t BasisOfSupplementRow(uint16_t row);

// How many rows the table has, each alternative counted, and the program (opcodes.h) of one.
// REQUIRES: row is the number of a row, from 1.
size_t SupplementRows();

// The encoded rows, one behind the other.
std::span<const uint8_t> SupplementBytes();
const uint8_t* SupplementProgram(uint16_t row);

}  // namespace fi

#endif  // FI_TABLES_SUPPLEMENT_TABLE_H_
