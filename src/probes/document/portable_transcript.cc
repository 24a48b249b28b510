#include "probes/document/portable_transcript.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <string_view>

#include "formatid/io.h"
#include "registry/format_ids.h"
#include "stream/line_reader.h"

namespace fi {
namespace {

constexpr uint32_t kMaxLines = 10;
constexpr uint32_t kMaxLineBytes = 1023;

// Deliberate: in any order, and lines of other kinds may stand anywhere.
constexpr std::string_view kLines[] = {"begin=head", "type=ptf", "end=head"};

char LowerCase(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

bool Is(const LineHead& line, std::string_view lowerCase) {
  return line.length == lowerCase.size() &&
         std::equal(lowerCase.begin(), lowerCase.end(), line.text.begin(),
                    [](char wanted, char letter) { return wanted == LowerCase(letter); });
}

// The bit of the line among those sought, or 0.
uint32_t BitOf(const LineHead& line) {
  for (size_t i = 0; i < std::size(kLines); ++i) {
    if (Is(line, kLines[i])) return 1u << i;
  }
  return 0;
}

}  // namespace

FormatId PortableTranscriptProbe(IdentificationStream* stream) {
  if (IdStreamSeek(stream, 0, kIoFromStart) != 0) return kNoMatch;
  uint32_t missing = (1u << std::size(kLines)) - 1;
  // As long as the lines left can be the ones that are missing.
  for (uint32_t left = kMaxLines; left >= static_cast<uint32_t>(std::popcount(missing)); --left) {
    const LineHead line = ReadLineHead(stream, kMaxLineBytes + 1);
    // No header: binary data, or text without lines, of which no more is read than this.
    if (line.end == LineEnd::kNul || line.end == LineEnd::kFull) return kNoMatch;
    missing &= ~BitOf(line);
    if (missing == 0) return kFormatPortableTranscript;
    if (line.end == LineEnd::kDataEnd) return kNoMatch;
  }
  return kNoMatch;
}

}  // namespace fi
