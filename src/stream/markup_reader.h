// The characters of a markup text, one by one, whichever way they are stored. What lies above ASCII
// only has to be passed over, so that a 16-bit unit above 7F reads as "?".
#ifndef FI_STREAM_MARKUP_READER_H_
#define FI_STREAM_MARKUP_READER_H_

#include <cstdint>
#include <string_view>

#include "stream/id_stream.h"

namespace fi {

// How text is stored from an offset on, behind its mark.
enum class TextUnits : uint8_t { kBytes, kWordsLE, kWordsBE };
struct TextForm {
  TextUnits units = TextUnits::kBytes;
  int64_t start = 0;  // offset of the first character
};

class MarkupReader {
 public:
  // Reads at most `limit` characters.
  MarkupReader(IdentificationStream* stream, const TextForm& form, uint32_t limit);

  // The next character, or kEndOfData. A NUL ends the text, too, and makes it no text.
  uint32_t Next();

  // Makes the character that was read last the next one again. REQUIRES: there was one.
  void PutBack() { held_ = true; }

  // The next character behind white space.
  uint32_t NextBehindSpace();

  // Reads on behind the next `end`, of two or three characters of which the last comes but once.
  // False when the text ends before.
  bool SkipPast(std::string_view end);

  bool MetNul() const { return metNul_; }

 private:
  uint32_t Read();

  IdentificationStream* stream_;
  TextUnits units_;
  uint32_t left_;
  uint32_t last_ = kEndOfData;
  bool held_ = false;
  bool metNul_ = false;
};

// Whether a character that was read is white space; the end of the data is not.
inline bool IsMarkupSpace(uint32_t c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

}  // namespace fi

#endif  // FI_STREAM_MARKUP_READER_H_
