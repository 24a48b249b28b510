// Lines of text files of which only the first letters matter, read in place: the rest of a line is
// searched for its end inside the stream's buffer.
#ifndef FI_STREAM_LINE_HEAD_H_
#define FI_STREAM_LINE_HEAD_H_

#include <array>
#include <cstdint>
#include <string_view>

#include "stream/id_stream.h"

namespace fi {

// What a line ended with. A full line goes on; the rest is the next line.
enum class LineEnd : uint8_t { kMark, kFull, kNul, kDataEnd };

struct LineHead {
  std::array<char, 16> text;
  uint32_t length;  // of the whole line in bytes, without its end
  LineEnd end;

  // The line as far as it is kept.
  std::string_view Kept() const {
    return {text.data(), length < text.size() ? length : text.size()};
  }
};

// Reads a line of at most `limit` bytes. It ends at LF, CR (of LF CR and CR LF both are consumed),
// NUL or the end of the data; other control bytes are part of it.
LineHead ReadLineHead(IdentificationStream* stream, uint32_t limit);

}  // namespace fi

#endif  // FI_STREAM_LINE_HEAD_H_
