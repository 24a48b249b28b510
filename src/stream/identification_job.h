// What the caller of an identification lends to the probes that decrypt: a way to ask the host for
// a password, and one to identify what was decrypted. Every identification stream refers to one.
// And what an identification answers.
#ifndef FI_STREAM_IDENTIFICATION_JOB_H_
#define FI_STREAM_IDENTIFICATION_JOB_H_

#include <cstdint>

#include "formatid/formatid.h"
#include "formatid/io.h"
#include "formatid/platform.h"

namespace fi {

struct Work;

// What one identification comes to.
struct Answer {
  uint32_t status = kFiOk;  // of FIIdHandle
  FormatId id = kFormatUnknown;
  FIEvidence evidence{};
  uint32_t decryption = kFiOk;  // how that went, also where the status leaves it out
};

// What a caller lets an identification look at beside the signatures.
struct Behaviour {
  bool text = false;        // plain text is told from unknown content
  bool delimited = false;   // and delimited text from other text
  bool supplement = false;  // general answers are looked into
};

struct IdentificationJob {
  // Identifies a decrypted view on behalf of the same caller. Never null.
  Answer (*identify)(const IdentificationJob& job, IOHandle* handle);

  // Asks the host for a password; `passwordContext` is the first of its two last arguments. Never
  // null.
  FIPasswordCallback askPassword;
  uintptr_t passwordContext = 0;

  // What the identification may cost and has cost; null: there is no limit and no record.
  Work* work = nullptr;

  Behaviour behaviour{};
};

// The job of a stream that no caller stands behind: nothing is decrypted, nothing identified again.
inline constexpr IdentificationJob kNoJob = {
    [](const IdentificationJob& /*job*/, IOHandle* /*handle*/) {
      return Answer{.status = FI_NO_STREAM};
    },
    [](uint32_t /*code*/, FIPasswordRequest* request, uintptr_t /*first*/,
       uintptr_t /*second*/) noexcept -> uint32_t {
      ++request->attempts;
      return kFiNoCallback;
    },
};

}  // namespace fi

#endif  // FI_STREAM_IDENTIFICATION_JOB_H_
