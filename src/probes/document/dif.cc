#include "probes/document/dif.h"

#include <bit>
#include <iterator>
#include <string_view>

#include "formatid/io.h"
#include "registry/format_ids.h"
#include "stream/line_reader.h"

namespace fi {
namespace {

constexpr uint32_t kMaxLines = 20;
constexpr uint32_t kMaxLineBytes = 79;

// Deliberate: a line needs only to begin with its name.
constexpr std::string_view kNames[] = {"TABLE", "VECTORS", "TUPLES", "DATA"};

// The bit of the name that the line begins with, or 0.
uint32_t NameOf(const LineHead& line) {
  for (size_t i = 0; i < std::size(kNames); ++i) {
    if (line.Kept().starts_with(kNames[i])) return 1u << i;
  }
  return 0;
}

}  // namespace

FormatId DifProbe(IdentificationStream* stream) {
  if (IdStreamSeek(stream, 0, kIoFromStart) != 0) return kNoMatch;
  uint32_t missing = (1u << std::size(kNames)) - 1;
  // As long as the lines left can hold the names that are missing.
  for (uint32_t left = kMaxLines; left >= static_cast<uint32_t>(std::popcount(missing)); --left) {
    const LineHead line = ReadLineHead(stream, kMaxLineBytes);
    // Deliberate: a last line without an end does not count.
    if (line.end == LineEnd::kNul || line.end == LineEnd::kDataEnd) return kNoMatch;
    missing &= ~NameOf(line);
    if (missing == 0) return kFormatDif;
  }
  return kNoMatch;
}

}  // namespace fi
