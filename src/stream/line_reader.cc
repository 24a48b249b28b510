#include "stream/line_reader.h"

#include <algorithm>
#include <cstring>

namespace fi {
namespace {

constexpr char kFormFeed = '\f';

// How many of `size` bytes stand before the first `end`.
size_t LengthBefore(char end, const uint8_t* bytes, size_t size) {
  const void* found = std::memchr(bytes, end, size);
  return found == nullptr ? size : static_cast<size_t>(static_cast<const uint8_t*>(found) - bytes);
}

// Moves what the stream holds of the line, at most `room` bytes, and returns their number.
size_t TakeBuffered(char* target, size_t room, IdentificationStream* stream) {
  if (stream->remaining <= 0) return 0;
  size_t size = std::min(room, static_cast<size_t>(stream->remaining));
  for (const char end : {'\n', '\r', kFormFeed}) size = LengthBefore(end, stream->next, size);
  std::memcpy(target, stream->next, size);
  stream->next += size;
  stream->remaining -= static_cast<int32_t>(size);
  return size;
}

// Passes the other half of a CR LF or LF CR pair.
void SkipOtherHalf(uint32_t end, IdentificationStream* stream) {
  const uint32_t other = end ^ '\n' ^ '\r';
  const uint32_t following = IdStreamGetByte(stream);
  if (following != other && following != kEndOfData) PutBackByte(stream);
}

}  // namespace

uint16_t ProbeReadLine(char* buffer, uint16_t capacity, IdentificationStream* stream) {
  if (capacity < 2) {
    if (capacity == 1) buffer[0] = '\0';
    return 0;
  }
  const size_t most = capacity - 1u;
  size_t length = 0;
  while (length < most) {
    length += TakeBuffered(buffer + length, most - length, stream);
    if (length == most) break;
    const uint32_t byte = IdStreamGetByte(stream);
    if (byte == kEndOfData || byte == kFormFeed) break;
    if (byte == '\n' || byte == '\r') {
      SkipOtherHalf(byte, stream);
      break;
    }
    buffer[length++] = static_cast<char>(byte);
  }
  buffer[length] = '\0';
  return static_cast<uint16_t>(length);
}

}  // namespace fi
