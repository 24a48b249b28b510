// A handle over a regular file. It reads with pread at its own position and keeps two blocks: the
// head of the file, to which the signatures return again and again, and a window that follows the
// reads elsewhere. Near the end the window is laid so that it holds the whole tail. So the
// signatures cost one read of each block. The size is that of the file at the opening. A file that
// does not tell its size (procfs) is taken to end with its first block.
#ifndef FI_TOOLKIT_IO_FILE_HANDLE_H_
#define FI_TOOLKIT_IO_FILE_HANDLE_H_

#include <array>
#include <cstdint>
#include <string_view>

#include "toolkit/io/positioned_handle.h"

namespace fi::io {

enum class DescriptorUse { kOwned, kBorrowed };

class FileHandle final : public PositionedHandle {
 public:
  // `size` in bytes, as the system told it; 0 also stands for files that do not tell (procfs).
  FileHandle(int descriptor, DescriptorUse use, int64_t size, std::string_view name,
             Work* work = nullptr);

 protected:
  int64_t Size() override;
  int32_t ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) override;
  int32_t OtherInfo(uint32_t code, void* out) override;

 private:
  static constexpr uint32_t kBlockSize = 4096;

  struct Block {
    int64_t offset = 0;
    uint32_t filled = 0;
    std::array<uint8_t, kBlockSize> bytes;

    // Copies what the block holds from `from` on; the number of bytes, 0 when it is outside.
    uint32_t Copy(int64_t from, uint8_t* buffer, uint32_t size) const;
  };

  ~FileHandle() override;

  bool LoadHead();
  bool LoadWindow(int64_t offset);
  bool Pread(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count);

  const int descriptor_;
  const DescriptorUse use_;
  int64_t size_;
  int32_t readError_ = 0;
  bool headLoaded_ = false;
  Block head_;
  Block window_;
};

}  // namespace fi::io

#endif  // FI_TOOLKIT_IO_FILE_HANDLE_H_
