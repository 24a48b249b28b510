// The walk over every row of the signature table, whose answers the indexed walk reproduces.
#ifndef FI_TESTS_SUPPORT_PLAIN_WALK_H_
#define FI_TESTS_SUPPORT_PLAIN_WALK_H_

#include "signature/signature_walk.h"
#include "tables/signature_table.h"

namespace fi::testing {

inline WalkResult PlainWalk(SignatureRun& run) {
  for (size_t row = 0; row < kSignatureRows; ++row) {
    const uint8_t* program = kSignatureTable.bytes.data() + kSignatureTable.starts[row];
    if (const FormatId id = RunProgram(program, run); id != kNoMatch) {
      return {id, static_cast<uint16_t>(row + 1)};
    }
  }
  return {};
}

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_PLAIN_WALK_H_
