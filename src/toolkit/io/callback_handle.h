// A handle over the callback of a host. Like the handle over a file it keeps two blocks, the head
// and a window. The window follows the reads elsewhere, and covers the tail near the end. So the
// callback serves few and larger pieces.
#ifndef FI_TOOLKIT_IO_CALLBACK_HANDLE_H_
#define FI_TOOLKIT_IO_CALLBACK_HANDLE_H_

#include <array>
#include <cstdint>
#include <string_view>

#include "formatid/identify.h"
#include "toolkit/io/positioned_handle.h"

namespace fi::io {

class CallbackHandle final : public PositionedHandle {
 public:
  // `size` may be FI_UNKNOWN_SIZE: then the end is searched for where it matters.
  CallbackHandle(FIReadAt readAt, void* context, uint64_t size, std::string_view name, Work* work);

 protected:
  int64_t Size() override;
  int32_t ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) override;

 private:
  static constexpr uint32_t kBlockSize = 4096;

  struct Block {
    uint64_t offset = 0;
    uint32_t filled = 0;
    std::array<uint8_t, kBlockSize> bytes;

    // Copies what the block holds from `from` on; the number of bytes, 0 when it is outside.
    uint32_t Copy(uint64_t from, uint8_t* buffer, uint32_t size) const;
  };

  enum class Got : uint8_t { kBytes, kEnd, kMissing, kFailed };

  ~CallbackHandle() override = default;

  Got Ask(uint64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count);
  Got AskFully(uint64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count);
  Got Load(Block& block, uint64_t offset);
  Got ReadBlock(uint64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count);
  bool HasByteAt(uint64_t offset);
  uint64_t SearchEnd();

  const FIReadAt readAt_;
  void* const context_;
  uint64_t size_;       // FI_UNKNOWN_SIZE until it is known
  uint64_t known_ = 0;  // bytes before it exist
  int32_t error_ = 0;   // of the last call of the callback that failed
  Block head_;
  Block window_;
};

}  // namespace fi::io

#endif  // FI_TOOLKIT_IO_CALLBACK_HANDLE_H_
