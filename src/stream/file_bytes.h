// Bytes at fixed places of a file, for probes of binary formats: read once, then looked at by
// offset. A place beyond what was read is a miss, never a fault.
#ifndef FI_STREAM_FILE_BYTES_H_
#define FI_STREAM_FILE_BYTES_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

#include "platform/io.h"
#include "stream/buffered_scan.h"
#include "stream/id_stream.h"

namespace fi {

// Up to kCapacity bytes of the file, from one offset on.
template <size_t kCapacity>
class FileBytes {
 public:
  // Leaves the stream behind the bytes that were read.
  FileBytes(IdentificationStream* stream, int64_t offset) {
    if (IdStreamSeek(stream, offset, kIoFromStart) != 0) return;
    while (size_ < kCapacity) {
      const uint32_t byte = IdStreamGetByte(stream);  // refills the buffer where that is due
      if (byte == kEndOfData) return;
      bytes_[size_++] = static_cast<uint8_t>(byte);
      const size_t more =
          std::min(kCapacity - size_, static_cast<size_t>(std::max(stream->remaining, 0)));
      std::memcpy(bytes_.data() + size_, stream->next, more);
      PassBuffered(stream, static_cast<uint32_t>(more));
      size_ += more;
    }
  }

  size_t size() const { return size_; }
  bool Has(size_t offset, size_t count) const { return offset <= size_ && count <= size_ - offset; }

  // What is not there reads as 0.
  uint8_t Byte(size_t offset) const { return Has(offset, 1) ? bytes_[offset] : 0; }
  uint32_t WordLE(size_t offset) const { return Byte(offset) | uint32_t{Byte(offset + 1)} << 8; }
  uint32_t WordBE(size_t offset) const { return uint32_t{Byte(offset)} << 8 | Byte(offset + 1); }
  uint32_t DwordLE(size_t offset) const { return WordLE(offset) | WordLE(offset + 2) << 16; }
  uint32_t DwordBE(size_t offset) const { return WordBE(offset) << 16 | WordBE(offset + 2); }

  // Whether exactly these bytes stand there.
  bool Holds(size_t offset, std::string_view bytes) const {
    return Has(offset, bytes.size()) && View().substr(offset, bytes.size()) == bytes;
  }

  std::span<const uint8_t> Bytes() const { return std::span(bytes_).first(size_); }
  std::string_view View() const { return {reinterpret_cast<const char*>(bytes_.data()), size_}; }

 private:
  std::array<uint8_t, kCapacity> bytes_{};
  size_t size_ = 0;
};

// Size of the file in bytes, 0 where it cannot be told. The stream keeps what it has buffered.
inline uint64_t FileSize(const IdentificationStream* stream) {
  IOHandle* handle = stream->handle;
  if (io::Has64Bit(handle)) {
    int64_t size = 0;
    if (!io::Seek64(handle, kIoFromEnd, 0) || !io::Tell64(handle, &size)) return 0;
    return static_cast<uint64_t>(size);
  }
  uint32_t size = 0;
  if (!io::Seek(handle, kIoFromEnd, 0) || !io::Tell(handle, &size)) return 0;
  return size;
}

}  // namespace fi

#endif  // FI_STREAM_FILE_BYTES_H_
