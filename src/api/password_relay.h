// Hands a request for a password on to the host.
#ifndef FI_API_PASSWORD_RELAY_H_
#define FI_API_PASSWORD_RELAY_H_

#include <cstdint>

#include "formatid/platform.h"

namespace fi {

// Calls the callback that the host registered as global data item 30 and returns its result, or
// kFiNoCallback without one. Counts the attempt in the request either way. An FIPasswordCallback.
uint32_t RelayPasswordRequest(uint32_t code, FIPasswordRequest* request, uintptr_t first,
                              uintptr_t second) noexcept;

}  // namespace fi

#endif  // FI_API_PASSWORD_RELAY_H_
