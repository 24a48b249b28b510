#include "toolkit/io/memory_handle.h"

#include <algorithm>
#include <cstring>

namespace fi::io {

MemoryHandle::MemoryHandle(const uint8_t* data, uint64_t size, std::string_view name, Work* work)
    : PositionedHandle(name, {0, work, true}), data_(data), size_(static_cast<int64_t>(size)) {}

int64_t MemoryHandle::Size() { return size_; }

int32_t MemoryHandle::ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) {
  if (offset >= size_ || size == 0) return 0;
  *count = static_cast<uint32_t>(std::min(int64_t{size}, size_ - offset));
  std::memcpy(buffer, data_ + offset, *count);
  return 0;
}

}  // namespace fi::io
