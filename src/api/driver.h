// One identification, from handle to answer.
#ifndef FI_API_DRIVER_H_
#define FI_API_DRIVER_H_

#include <cstdint>

#include "formatid/platform.h"

namespace fi {

// What FIIdHandle promises, for callers inside the library: the exports, and probes that opened a
// decrypted view. `evidence` may be null; it is filled in any case but a failed stream.
uint32_t IdentifyHandle(IOHandle* handle, uint32_t flags, FormatId* idOut, FIEvidence* evidence);

}  // namespace fi

#endif  // FI_API_DRIVER_H_
