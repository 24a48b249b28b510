// What the supplement makes of general answers, when a caller asks for it (kFiSupplement). Specific
// answers that the content proves false are for corrections.h.
#ifndef FI_API_SUPPLEMENT_H_
#define FI_API_SUPPLEMENT_H_

#include <cstdint>

#include "formatid/platform.h"
#include "signature/interpreter.h"
#include "signature/signature_walk.h"

namespace fi {

struct SupplementAnswer {
  FormatId id = kNoMatch;
  uint16_t basis = kFiBasisNone;

  explicit operator bool() const { return id != kNoMatch; }
};

// Whether `id` says no more than what a file is packed or written in, or nothing at all. Items of a
// mail program count as well: their class may be told more exactly.
bool IsGeneralAnswer(FormatId id);

// What a walk over the signatures of the supplement came to. They are asked about a file that is no
// storage.
SupplementAnswer SupplementAnswerOf(const WalkResult& match);

// Asks the probes that look into what `id` stands for: ZIP archives, storages of an unknown kind,
// message items whose class is not told, Ogg files, text, and what may be text in part. No answer
// for every other identifier. The stream and the handle are left anywhere.
SupplementAnswer RefineGeneralAnswer(SignatureRun& run, FormatId id);

// Whether the first bytes rule out text, so that the text fallback can be skipped.
bool BeginsBinary(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_API_SUPPLEMENT_H_
