// One identification, from handle to answer.
#ifndef FI_API_DRIVER_H_
#define FI_API_DRIVER_H_

#include <cstdint>

#include "formatid/platform.h"
#include "platform/work.h"
#include "stream/identification_job.h"

namespace fi {

// What FIIdHandle promises, for the exports. `evidence` may be null; it is filled in any case but a
// failed stream.
uint32_t IdentifyHandle(IOHandle* handle, uint32_t flags, FormatId* idOut, FIEvidence* evidence);

// The same for a job, whose functions and record it uses.
uint32_t IdentifyForJob(const IdentificationJob& job, IOHandle* handle, uint32_t flags,
                        FormatId* idOut, FIEvidence* evidence);

// IdentifyHandle within the limits of `work`, with which `handle` was opened (OpenSource). The
// answer is the best that was found; `work` tells whether a limit was reached or something failed.
uint32_t IdentifyWithWork(IOHandle* handle, uint32_t flags, Work* work, FormatId* idOut,
                          FIEvidence* evidence);

// What the exports lend to the probes that decrypt: the callback that the host registered, and
// IdentifyHandle without flags.
extern const IdentificationJob kHostJob;

}  // namespace fi

#endif  // FI_API_DRIVER_H_
