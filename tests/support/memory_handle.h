// The double of a host's IO handle: bytes in memory, with faults to switch on and counters to
// assert.
#ifndef FI_TESTS_SUPPORT_MEMORY_HANDLE_H_
#define FI_TESTS_SUPPORT_MEMORY_HANDLE_H_

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "formatid/io.h"

namespace fi::testing {

class MemoryHandle : public IOHandle {
 public:
  explicit MemoryHandle(std::string bytes, std::string name = "");
  MemoryHandle(const MemoryHandle&) = delete;
  MemoryHandle& operator=(const MemoryHandle&) = delete;

  // Behaviour.
  uint32_t mostPerRead = UINT32_MAX;  // short reads
  bool has64Bit = true;
  bool hasName = true;
  bool wideName = false;
  uint64_t failingRead = 0;  // number of the read from 1 that fails, 0: none
  uint64_t failingSeek = 0;
  std::optional<std::array<uint8_t, 16>> classId;  // makes it a storage without children

  // Counters.
  uint64_t reads = 0;
  uint64_t bytesRead = 0;
  uint64_t seeks = 0;
  uint64_t closes = 0;

  int64_t position = 0;

 private:
  static const IOHandleOperations kOperations64;

  static MemoryHandle* Self(IOHandle* handle) { return static_cast<MemoryHandle*>(handle); }
  static int32_t Close(IOHandle* handle);
  static int32_t Read(IOHandle* handle, void* buffer, uint32_t size, uint32_t* count);
  static int32_t Seek(IOHandle* handle, uint32_t origin, int32_t offset);
  static int32_t Tell(IOHandle* handle, uint32_t* position);
  static int32_t GetInfo(IOHandle* handle, uint32_t code, void* out);
  static int32_t Open(IOHandle* handle, IOHandle** target, uint32_t sourceType, const void* source,
                      uint32_t flags);
  static int32_t Seek64(IOHandle* handle, uint32_t origin, int64_t offset);
  static int32_t Tell64(IOHandle* handle, int64_t* position);

  int32_t MoveTo(uint32_t origin, int64_t offset);

  std::string bytes_;
  std::string name_;
};

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_MEMORY_HANDLE_H_
