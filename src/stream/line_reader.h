// Lines for the probes that read text: the end of a line is LF, CR, either pair of them, a form
// feed or the end of the data.
#ifndef FI_STREAM_LINE_READER_H_
#define FI_STREAM_LINE_READER_H_

#include <array>
#include <cstdint>

#include "stream/id_stream.h"

namespace fi {

// The scratch buffer of a text probe, one per call.
using LineBuffer = std::array<char, 1024>;

// What the probes pass as capacity: a line holds at most 1022 bytes, the rest of it is the next.
inline constexpr uint16_t kLineCapacity = 1023;

// Reads a line of at most capacity - 1 bytes into `buffer`, without its end, and terminates it with
// NUL. NUL and other control characters are stored like any byte. Returns the number of bytes
// stored: 0 for an empty line, at end of data, and for a capacity below 2.
// REQUIRES: `buffer` holds `capacity` bytes.
uint16_t ProbeReadLine(char* buffer, uint16_t capacity, IdentificationStream* stream);

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
