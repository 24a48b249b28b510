#include "api/password_relay.h"

#include "platform/no_throw.h"

namespace fi {

uint32_t RelayPasswordRequest(uint32_t code, FIPasswordRequest* request, uintptr_t first,
                              uintptr_t second) noexcept {
  void* item = nullptr;
  uint32_t result = kFiNoCallback;
  if (UTGetGlobalData(kUtDataPasswordCallback, &item) == 0 && item != nullptr) {
    const FIPasswordCallback callback = *static_cast<const FIPasswordCallback*>(item);
    if (callback != nullptr) {
      result =
          NoThrow<uint32_t>(kFiNoCallback, [&] { return callback(code, request, first, second); });
    }
  }
  ++request->attempts;
  return result;
}

}  // namespace fi
