// What the caller of an identification lends to the probes that decrypt: a way to ask the host for
// a password, and one to identify what was decrypted. Every identification stream refers to one.
#ifndef FI_STREAM_IDENTIFICATION_JOB_H_
#define FI_STREAM_IDENTIFICATION_JOB_H_

#include <cstdint>

#include "formatid/formatid.h"
#include "formatid/io.h"
#include "formatid/platform.h"

namespace fi {

struct Work;

struct IdentificationJob {
  // Identifies a decrypted view for this job, with no flags of its own. 0 with the answer in
  // `*idOut`, or the status that a failed identification has.
  uint32_t (*identify)(const IdentificationJob& job, IOHandle* handle, FormatId* idOut);

  // Asks the host for a password. Never null.
  FIPasswordCallback askPassword;

  // What the identification may cost and has cost; null: there is no limit and no record.
  Work* work = nullptr;
};

// The job of a stream that no caller stands behind: nothing is decrypted, nothing identified again.
inline constexpr IdentificationJob kNoJob = {
    [](const IdentificationJob& /*job*/, IOHandle* /*handle*/, FormatId* /*idOut*/) -> uint32_t {
      return FI_NO_STREAM;
    },
    [](uint32_t /*code*/, FIPasswordRequest* request, uintptr_t /*first*/,
       uintptr_t /*second*/) noexcept -> uint32_t {
      ++request->attempts;
      return kFiNoCallback;
    },
};

}  // namespace fi

#endif  // FI_STREAM_IDENTIFICATION_JOB_H_
