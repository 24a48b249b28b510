// Runs the programs of a table in order until one yields an identifier: those of the signatures,
// and those of the supplement for what they leave open.
#ifndef FI_ENGINE_SIGNATURE_WALK_H_
#define FI_ENGINE_SIGNATURE_WALK_H_

#include <cstdint>

#include "engine/interpreter.h"
#include "formatid/formatid.h"

namespace fi {

struct WalkResult {
  FormatId id = kNoMatch;
  uint16_t row = 0;  // number of the deciding row from 1; 0: none
};

// Walks the rows that the first byte leaves possible. The answer, and the position that each
// program finds the stream at, are those of a walk over every row.
WalkResult WalkSignatures(SignatureRun& run);

// What an answer of that row rests on: one of the kFiBasis values. REQUIRES: 1 <= row <= 467.
uint16_t BasisOfRow(uint16_t row);

// The same for the supplement table and its rows.
WalkResult WalkSupplement(SignatureRun& run);
uint16_t BasisOfSupplementRow(uint16_t row);

}  // namespace fi

#endif  // FI_ENGINE_SIGNATURE_WALK_H_
