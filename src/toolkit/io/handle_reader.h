// Reads at any place of an IO handle through the handle's own operations, and leaves its position
// where it was: the handle is in use by whoever asks what it holds.
#ifndef FI_TOOLKIT_IO_HANDLE_READER_H_
#define FI_TOOLKIT_IO_HANDLE_READER_H_

#include <cstdint>

#include "formatid/io.h"

namespace fi::io {

class HandleReader {
 public:
  // `handle` is borrowed for the life of the reader.
  explicit HandleReader(IOHandle* handle);

  IOHandle* handle() const { return handle_; }

  // Bytes that the handle holds; 0 when it does not tell.
  uint64_t Size() const;

  // Stores up to `size` bytes from `offset` and returns their number, which is smaller only where
  // the data ends or cannot be read.
  uint32_t ReadAt(uint64_t offset, uint8_t* buffer, uint32_t size) const;

 private:
  int64_t Position() const;
  bool MoveTo(int64_t position) const;

  IOHandle* handle_;
  bool has64Bit_;
};

}  // namespace fi::io

#endif  // FI_TOOLKIT_IO_HANDLE_READER_H_
