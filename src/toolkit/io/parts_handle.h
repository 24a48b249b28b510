// A handle over the parts of a file that a caller knows so far. A read of bytes that are in no part
// fails and is noted: the caller may get them and ask again.
#ifndef FI_TOOLKIT_IO_PARTS_HANDLE_H_
#define FI_TOOLKIT_IO_PARTS_HANDLE_H_

#include <cstdint>
#include <span>
#include <string_view>

#include "formatid/identify.h"
#include "toolkit/io/positioned_handle.h"

namespace fi::io {

// The size of the range that a caller is asked to get when `size` bytes from `offset` are missing.
// It is larger than the read, so that a caller far from its bytes is asked less often, and ends
// with the file. `fileSize` may be FI_UNKNOWN_SIZE.
uint64_t WantedSize(uint64_t offset, uint64_t size, uint64_t fileSize);

class PartsHandle final : public PositionedHandle {
 public:
  // The parts are borrowed for the life of the handle. `size` may be FI_UNKNOWN_SIZE.
  PartsHandle(std::span<const FIPart> parts, uint64_t size, std::string_view name, Work* work);

 protected:
  int64_t Size() override;
  int32_t ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) override;

 private:
  ~PartsHandle() override = default;

  const std::span<const FIPart> parts_;
  const uint64_t size_;
};

}  // namespace fi::io

#endif  // FI_TOOLKIT_IO_PARTS_HANDLE_H_
