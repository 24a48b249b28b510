// One identification, from handle to answer.
#ifndef FI_API_DRIVER_H_
#define FI_API_DRIVER_H_

#include <cstdint>

#include "formatid/platform.h"
#include "stream/identification_job.h"

namespace fi {

// What FIIdHandle promises, for the exports. `evidence` may be null; it is filled in any case but a
// failed stream.
uint32_t IdentifyHandle(IOHandle* handle, uint32_t flags, FormatId* idOut, FIEvidence* evidence);

// What the exports lend to the probes that decrypt: the callback that the host registered, and
// IdentifyHandle without flags.
extern const IdentificationJob kHostJob;

}  // namespace fi

#endif  // FI_API_DRIVER_H_
