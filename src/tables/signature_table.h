// The catalogue of signatures: programs (opcodes.h) one behind another, in an order that is part of
// the design. The first that yields an identifier decides, so the specific ones stand before the
// general ones, and deep probes and catch-alls come last.
#ifndef FI_TABLES_SIGNATURE_TABLE_H_
#define FI_TABLES_SIGNATURE_TABLE_H_

#include <array>
#include <cstddef>
#include <cstdint>

#include "signature/signature_encoder.h"
#include "signature/signature_index.h"
#include "signature/signature_walk.h"

namespace fi {

inline constexpr size_t kSignatureRows = 467;

// Size of the encoded table in bytes.
inline constexpr size_t kSignatureTableSize = 9762;

extern const EncodedTable<kSignatureRows, kSignatureTableSize> kSignatureTable;
extern const SignatureIndex<kSignatureRows> kSignatureIndex;

// Walks this table, and tells what an answer of one of its rows rests on (signature_walk.h).
WalkResult WalkSignatures(SignatureRun& run);
WalkResult WalkSignaturesTraced(SignatureRun& run);
uint16_t BasisOfRow(uint16_t row);

// Walks the rows behind number `row`, each, without the index: for files that a row was wrong
// about.
WalkResult WalkSignaturesBehind(SignatureRun& run, uint16_t row);

}  // namespace fi

#endif  // FI_TABLES_SIGNATURE_TABLE_H_
