#include "toolkit/io/handle_reader.h"

#include <limits>

#include "platform/io.h"

namespace fi::io {

HandleReader::HandleReader(IOHandle* handle) : handle_(handle), has64Bit_(io::Has64Bit(handle)) {}

int64_t HandleReader::Position() const {
  if (has64Bit_) {
    int64_t position = 0;
    return io::Tell64(handle_, &position) ? position : 0;
  }
  uint32_t position = 0;
  return io::Tell(handle_, &position) ? position : 0;
}

bool HandleReader::MoveTo(int64_t position) const {
  if (has64Bit_) return io::Seek64(handle_, kIoFromStart, position);
  if (position > std::numeric_limits<uint32_t>::max()) return false;
  return io::Seek(handle_, kIoFromStart, static_cast<uint32_t>(position));
}

uint64_t HandleReader::Size() const {
  const int64_t kept = Position();
  const bool moved =
      has64Bit_ ? io::Seek64(handle_, kIoFromEnd, 0) : io::Seek(handle_, kIoFromEnd, 0);
  const int64_t size = moved ? Position() : 0;
  (void)MoveTo(kept);
  return size > 0 ? static_cast<uint64_t>(size) : 0;
}

uint32_t HandleReader::ReadAt(uint64_t offset, uint8_t* buffer, uint32_t size) const {
  if (offset > static_cast<uint64_t>(std::numeric_limits<int64_t>::max())) return 0;
  const int64_t kept = Position();
  uint32_t count = 0;
  if (MoveTo(static_cast<int64_t>(offset))) {
    while (count < size) {
      const uint32_t got = io::Read(handle_, buffer + count, size - count);
      if (got == 0) break;
      count += got;
    }
  }
  (void)MoveTo(kept);
  return count;
}

}  // namespace fi::io
