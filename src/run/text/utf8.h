// UTF-8 as file names carry it: bytes that need not be valid.
#ifndef FI_RUN_TEXT_UTF8_H_
#define FI_RUN_TEXT_UTF8_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace fi::app {

// Length in bytes (1 to 4) of the well-formed sequence that `bytes` begins with; 0 when there is
// none (overlong forms, surrogates, values past U+10FFFF, cut sequences) and for an empty text.
size_t Utf8SequenceLength(std::string_view bytes);

bool IsUtf8(std::string_view bytes);

// True for U+0000..U+001F and U+007F..U+009F, given by its whole sequence: what a terminal may
// obey.
bool IsControl(std::string_view sequence);

// True for what would let a name read as another: zero-width characters, bidirectional controls,
// line and paragraph separators, the byte-order mark and tag characters. `sequence` is whole.
bool IsDeceptive(std::string_view sequence);

// The code point of a whole sequence.
uint32_t CodePoint(std::string_view sequence);

}  // namespace fi::app

#endif  // FI_RUN_TEXT_UTF8_H_
