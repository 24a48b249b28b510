// The option store and the global data of the process: small fixed tables of atomics, so that any
// thread may read and write them at any time without a lock. The last writer of a value wins.

#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>

#include "formatid/platform.h"

namespace {

// An option takes a slot when it is first set and keeps it.
struct OptionSlot {
  std::atomic<uint32_t> option{0};  // 0: free
  // The value in the low half; bit 32 tells that it was set.
  std::atomic<uint64_t> value{0};
};

constexpr uint64_t kIsSet = uint64_t{1} << 32;
constexpr uint32_t kFailed = 1;
constexpr uint32_t kAlreadyInitialised = 0x900;
constexpr size_t kOptionSlots = 64;
constexpr size_t kDataItems = 64;

}  // namespace

struct UTOptionSet {
  std::array<OptionSlot, kOptionSlots> slots;

  // The slot of `option`; with `create` the first free one becomes it. Null when there is none.
  OptionSlot* Find(uint32_t option, bool create) {
    for (OptionSlot& slot : slots) {
      uint32_t owner = slot.option.load(std::memory_order_acquire);
      if (owner == 0) {
        if (!create) return nullptr;
        if (slot.option.compare_exchange_strong(owner, option)) return &slot;
      }
      if (owner == option) return &slot;
    }
    return nullptr;
  }
};

namespace {

constinit UTOptionSet gOptions;
constinit std::array<std::atomic<void*>, kDataItems> gData;
constinit std::atomic<uint32_t> gClients{0};

}  // namespace

UTOptionSet* UTGetGlobalOptionSet(void) noexcept { return &gOptions; }

uint32_t UTGetOption(UTOptionSet* set, uint32_t option, void* value, uint32_t* size) noexcept {
  if (set == nullptr || value == nullptr || size == nullptr || option == 0) return kFailed;
  const OptionSlot* slot = set->Find(option, false);
  if (slot == nullptr || *size < sizeof(uint32_t)) return kFailed;
  const uint64_t stored = slot->value.load(std::memory_order_acquire);
  if ((stored & kIsSet) == 0) return kFailed;
  const auto word = static_cast<uint32_t>(stored);
  std::memcpy(value, &word, sizeof(word));
  *size = sizeof(word);
  return 0;
}

uint32_t UTSetOption(UTOptionSet* set, uint32_t option, const void* value, uint32_t size) noexcept {
  uint32_t word = 0;
  if (set == nullptr || value == nullptr || option == 0 || size != sizeof(word)) return kFailed;
  OptionSlot* slot = set->Find(option, true);
  if (slot == nullptr) return kFailed;
  std::memcpy(&word, value, sizeof(word));
  slot->value.store(kIsSet | word, std::memory_order_release);
  return 0;
}

uint32_t UTGetGlobalOption(uint32_t option, void* value, uint32_t* size) noexcept {
  return UTGetOption(UTGetGlobalOptionSet(), option, value, size);
}

uint32_t UTGetGlobalData(uint32_t item, void** out) noexcept {
  if (item >= kDataItems || out == nullptr) return kFailed;
  *out = gData[item].load(std::memory_order_acquire);
  return 0;
}

uint32_t UTSetGlobalData(uint32_t item, void* data) noexcept {
  if (item >= kDataItems) return kFailed;
  gData[item].store(data, std::memory_order_release);
  return 0;
}

uint32_t UTInit(uint32_t /*client*/, void* /*a*/, void* /*b*/, void* /*c*/) noexcept {
  return gClients.fetch_add(1) == 0 ? 0 : kAlreadyInitialised;
}

uint32_t UTDeInit(void* /*a*/, void* /*b*/, void* /*c*/) noexcept {
  uint32_t clients = gClients.load();
  while (clients > 0 && !gClients.compare_exchange_weak(clients, clients - 1)) {
  }
  return 0;
}
