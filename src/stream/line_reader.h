// Lines of text files, read from the stream. LF and CR end a line, and so do LF CR and CR LF, of
// which both are consumed; what else does is the caller's choice. Lines of a text in memory are
// those of `Lines` (stream/text_view.h), which knows no LF CR.
#ifndef FI_STREAM_LINE_READER_H_
#define FI_STREAM_LINE_READER_H_

#include <array>
#include <cstdint>
#include <string_view>

#include "stream/id_stream.h"

namespace fi {

// The scratch buffer of a text probe, one per call.
using LineBuffer = std::array<char, 1024>;

// What the probes pass as capacity: a line holds at most 1022 bytes, the rest of it is the next.
inline constexpr uint16_t kLineCapacity = 1023;

// What ends a line beside LF, CR and the end of the data.
enum class LineEnds : uint8_t { kMarks, kMarksAndFormFeed };

// Reads a line of at most capacity - 1 bytes into `buffer`, without its end, and terminates it with
// NUL. NUL and other control characters are stored like any byte. Returns the number of bytes
// stored: 0 for an empty line, at end of data, and for a capacity below 2. The rest of a longer
// line is left for the next call. REQUIRES: `buffer` holds `capacity` bytes.
uint16_t ReadLine(char* buffer, uint16_t capacity, LineEnds ends, IdentificationStream* stream);

// What a line ended with. A full line goes on; the rest is the next line.
enum class LineEnd : uint8_t { kMark, kFull, kNul, kDataEnd };

// A line of which only the first letters matter.
struct LineHead {
  std::array<char, 16> text;
  uint32_t length;  // of the whole line in bytes, without its end
  LineEnd end;

  // The line as far as it is kept.
  std::string_view Kept() const {
    return {text.data(), length < text.size() ? length : text.size()};
  }
};

// Reads a line of at most `limit` bytes, in place: its end is searched for inside the stream's
// buffer. NUL ends it too; other control bytes are part of it.
LineHead ReadLineHead(IdentificationStream* stream, uint32_t limit);

// Whether the line of `length` bytes is ASCII text without NULs.
inline bool IsPlainAsciiLine(const LineBuffer& line, uint16_t length) {
  return IsPlainAsciiPrefix(reinterpret_cast<const uint8_t*>(line.data()), length);
}

// Makes the byte that was read last the next one again.
// REQUIRES: the last read gave a byte, not the end of data.
inline void PutBackByte(IdentificationStream* stream) {
  ++stream->remaining;
  --stream->next;
}

// Whether the last read from the stream met the end of the data.
inline bool MetEndOfData(const IdentificationStream* stream) { return stream->filled == 0; }

}  // namespace fi

#endif  // FI_STREAM_LINE_READER_H_
