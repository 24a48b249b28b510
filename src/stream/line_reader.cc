#include "stream/line_reader.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "stream/buffered_scan.h"

namespace fi {
namespace {

constexpr std::string_view kMarks = "\n\r";
constexpr std::string_view kMarksAndFormFeed = "\n\r\f";
constexpr std::string_view kMarksAndNul("\n\r\0", 3);

// How many of the next buffered bytes, of `limit` at most, stand before the first of `ends`.
uint32_t BytesBefore(std::string_view ends, const IdentificationStream* stream, uint32_t limit) {
  for (const char end : ends) limit = BufferedBytesBefore(stream, end, limit);
  return limit;
}

// Moves what the stream holds of the line, at most `room` bytes, and returns their number.
uint32_t TakeBuffered(char* target, uint32_t room, std::string_view ends,
                      IdentificationStream* stream) {
  if (stream->remaining <= 0) return 0;
  const uint32_t size = BytesBefore(ends, stream, room);
  std::memcpy(target, stream->next, size);
  PassBuffered(stream, size);
  return size;
}

// Passes the other half of a CR LF or LF CR pair. The end of data is never put back: no stale byte
// is handed out behind it.
void SkipOtherHalf(uint32_t end, IdentificationStream* stream) {
  const uint32_t other = end ^ '\n' ^ '\r';
  const uint32_t following = IdStreamGetByte(stream);
  if (following != other && following != kEndOfData) PutBackByte(stream);
}

void Append(LineHead& line, const uint8_t* bytes, uint32_t count) {
  const size_t kept = line.Kept().size();
  std::copy_n(bytes, std::min<size_t>(line.text.size() - kept, count), line.text.begin() + kept);
  line.length += count;
}

}  // namespace

uint16_t ReadLine(char* buffer, uint16_t capacity, LineEnds ends, IdentificationStream* stream) {
  if (capacity < 2) {
    if (capacity == 1) buffer[0] = '\0';
    return 0;
  }
  const bool formFeedEnds = ends == LineEnds::kMarksAndFormFeed;
  const std::string_view marks = formFeedEnds ? kMarksAndFormFeed : kMarks;
  const uint32_t most = capacity - 1u;
  uint32_t length = 0;
  while (length < most) {
    length += TakeBuffered(buffer + length, most - length, marks, stream);
    if (length == most) break;
    const uint32_t byte = IdStreamGetByte(stream);
    if (byte == kEndOfData || (byte == '\f' && formFeedEnds)) break;
    if (byte == '\n' || byte == '\r') {
      SkipOtherHalf(byte, stream);
      break;
    }
    buffer[length++] = static_cast<char>(byte);
  }
  buffer[length] = '\0';
  return static_cast<uint16_t>(length);
}

LineHead ReadLineHead(IdentificationStream* stream, uint32_t limit) {
  LineHead line{};
  while (line.length < limit) {
    const uint32_t byte = IdStreamGetByte(stream);
    if (byte == '\n' || byte == '\r') {
      SkipOtherHalf(byte, stream);
      line.end = LineEnd::kMark;
      return line;
    }
    if (byte == '\0' || byte == kEndOfData) {
      line.end = byte == '\0' ? LineEnd::kNul : LineEnd::kDataEnd;
      return line;
    }
    const auto first = static_cast<uint8_t>(byte);
    Append(line, &first, 1);
    const uint32_t run = BytesBefore(kMarksAndNul, stream, limit - line.length);
    Append(line, stream->next, run);
    PassBuffered(stream, run);
  }
  line.end = LineEnd::kFull;
  return line;
}

}  // namespace fi
