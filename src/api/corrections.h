// The fixed answers that the content can prove false. With kFiSupplement the supplement's answer
// then stands in their place; nothing else changes a specific answer.
#ifndef FI_API_CORRECTIONS_H_
#define FI_API_CORRECTIONS_H_

#include <cstdint>

#include "formatid/platform.h"
#include "signature/interpreter.h"
#include "stream/identification_job.h"

namespace fi {

// A specific answer of the fixed rules.
struct FixedAnswer {
  FormatId id = kNoMatch;
  uint16_t row = 0;  // of the signature table, from 1; 0: none, it is from the text sniffer
  Behaviour behaviour;

  // Identifies the file again, as if it had no name; never null.
  FormatId (*withoutName)(const SignatureRun& run, const Behaviour& behaviour) = nullptr;
};

// What stands in its place, or kNoMatch where the answer is right as far as can be told. Costs one
// look-up where no correction exists for the identifier. The stream and the handle are left
// anywhere.
FormatId CorrectionOf(SignatureRun& run, const FixedAnswer& answer);

}  // namespace fi

#endif  // FI_API_CORRECTIONS_H_
