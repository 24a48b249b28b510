#include "toolkit/crypto/stream_bytes.h"

#include "platform/io.h"

namespace fi::crypto {

std::optional<uint64_t> StreamSize(IOHandle* stream) {
  uint64_t size = 0;
  if (io::Has64Bit(stream)) {
    int64_t end = 0;
    if (!io::Seek64(stream, kIoFromEnd, 0) || !io::Tell64(stream, &end) || end < 0) {
      return std::nullopt;
    }
    size = static_cast<uint64_t>(end);
  } else {
    uint32_t end = 0;
    if (!io::Seek(stream, kIoFromEnd, 0) || !io::Tell(stream, &end)) return std::nullopt;
    size = end;
  }
  if (!io::Seek(stream, kIoFromStart, 0)) return std::nullopt;
  return size;
}

size_t ReadFully(IOHandle* stream, uint8_t* buffer, size_t size) {
  size_t total = 0;
  while (total < size) {
    const uint32_t count = io::Read(stream, buffer + total, static_cast<uint32_t>(size - total));
    if (count == 0) break;
    total += count;
  }
  return total;
}

}  // namespace fi::crypto
