#include "stream/line_head.h"

#include <algorithm>

#include "stream/buffered_scan.h"

namespace fi {
namespace {

// How many of the next buffered bytes, of `limit` at most, stand before the end of the line.
uint32_t BytesBeforeEnd(const IdentificationStream* stream, uint32_t limit) {
  for (const char end : {'\n', '\r', '\0'}) limit = BufferedBytesBefore(stream, end, limit);
  return limit;
}

void Append(LineHead& line, const uint8_t* bytes, uint32_t count) {
  const size_t kept = line.Kept().size();
  std::copy_n(bytes, std::min<size_t>(line.text.size() - kept, count), line.text.begin() + kept);
  line.length += count;
}

// Consumes `byte` if it comes next.
void PassOver(IdentificationStream* stream, uint32_t byte) {
  const uint32_t following = IdStreamGetByte(stream);
  if (following == byte || following == kEndOfData) return;
  ++stream->remaining;
  --stream->next;
}

}  // namespace

LineHead ReadLineHead(IdentificationStream* stream, uint32_t limit) {
  LineHead line{};
  while (line.length < limit) {
    const uint32_t byte = IdStreamGetByte(stream);
    if (byte == '\n' || byte == '\r') {
      PassOver(stream, byte == '\n' ? '\r' : '\n');
      line.end = LineEnd::kMark;
      return line;
    }
    if (byte == '\0' || byte == kEndOfData) {
      line.end = byte == '\0' ? LineEnd::kNul : LineEnd::kDataEnd;
      return line;
    }
    const auto first = static_cast<uint8_t>(byte);
    Append(line, &first, 1);
    const uint32_t run = BytesBeforeEnd(stream, limit - line.length);
    Append(line, stream->next, run);
    PassBuffered(stream, run);
  }
  line.end = LineEnd::kFull;
  return line;
}

}  // namespace fi
