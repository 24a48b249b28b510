// Ends a fuzz target that holds more memory at once than any input may cause, part of every target.
// With a sanitizer each allocation is counted; without one the kernel holds the limit.
#include <sys/resource.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define FI_COUNTS_ALLOCATIONS
#include <sanitizer/allocator_interface.h>
#endif
#endif

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);

namespace {

// An archive of 64 MB, which is the largest that is decompressed, grows by copying.
constexpr uint64_t kMostHeld = uint64_t{256} << 20;

#ifdef FI_COUNTS_ALLOCATIONS
std::atomic<uint64_t> held{0};

void OnAllocation(const volatile void*, size_t size) {
  if (held.fetch_add(size) + size > kMostHeld) std::abort();
}

void OnFree(const volatile void* pointer) {
  // Memory from before the hooks were there goes too.
  const uint64_t size = __sanitizer_get_allocated_size(const_cast<const void*>(pointer));
  uint64_t before = held.load();
  while (!held.compare_exchange_weak(before, before - (size < before ? size : before))) {
  }
}
#endif

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
#ifdef FI_COUNTS_ALLOCATIONS
  (void)__sanitizer_install_malloc_and_free_hooks(OnAllocation, OnFree);
#else
  constexpr uint64_t kProgram = uint64_t{64} << 20;
  const rlimit most = {kMostHeld + kProgram, kMostHeld + kProgram};
  (void)setrlimit(RLIMIT_DATA, &most);
#endif
  return 0;
}
