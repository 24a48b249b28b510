// A handle over a block of memory that the caller keeps.
#ifndef FI_TOOLKIT_IO_MEMORY_HANDLE_H_
#define FI_TOOLKIT_IO_MEMORY_HANDLE_H_

#include <cstdint>
#include <string_view>

#include "toolkit/io/positioned_handle.h"

namespace fi::io {

class MemoryHandle final : public PositionedHandle {
 public:
  // `data` is borrowed for the life of the handle. REQUIRES: size fits in int64_t.
  MemoryHandle(const uint8_t* data, uint64_t size, std::string_view name, Work* work = nullptr);

 protected:
  int64_t Size() override;
  int32_t ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) override;

 private:
  ~MemoryHandle() override = default;

  const uint8_t* const data_;
  const int64_t size_;
};

}  // namespace fi::io

#endif  // FI_TOOLKIT_IO_MEMORY_HANDLE_H_
