// A handle on the fuzz input that counts what is read of it.
#ifndef FI_FUZZ_INPUT_HANDLE_H_
#define FI_FUZZ_INPUT_HANDLE_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "toolkit/io/positioned_handle.h"

namespace fi::fuzzing {

class InputHandle final : public io::PositionedHandle {
 public:
  InputHandle(const uint8_t* data, size_t size, std::string_view name = "input",
              const io::HandleOrigin& origin = {})
      : PositionedHandle(name, origin), data_(data), size_(size) {}
  ~InputHandle() override = default;

  uint32_t mostPerRead = UINT32_MAX;  // short reads
  uint64_t reads = 0;
  uint64_t bytesRead = 0;

 protected:
  int64_t Size() override { return static_cast<int64_t>(size_); }
  int32_t ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) override {
    ++reads;
    if (static_cast<uint64_t>(offset) >= size_) return 0;
    *count = static_cast<uint32_t>(
        std::min<uint64_t>({size, mostPerRead, size_ - static_cast<uint64_t>(offset)}));
    std::copy_n(data_ + offset, *count, buffer);
    bytesRead += *count;
    return 0;
  }

 private:
  const uint8_t* data_;
  size_t size_;
};

}  // namespace fi::fuzzing

#endif  // FI_FUZZ_INPUT_HANDLE_H_
