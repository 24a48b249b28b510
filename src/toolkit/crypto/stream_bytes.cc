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

}  // namespace fi::crypto
