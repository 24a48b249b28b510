#include "probes/unidentified/header_checksum.h"

#include "formatid/io.h"

namespace fi {
namespace {

constexpr FormatId kDocument = 1010;

constexpr uint32_t kEndOffset = 4;
constexpr uint16_t kRangeBase = 32;  // what the two offsets count from
constexpr int32_t kLastEnd = 2016;

}  // namespace

FormatId HeaderChecksumProbe(IdentificationStream* stream) {
  if (IdStreamSeek(stream, kEndOffset, kIoFromStart) != 0) return kNoMatch;
  const int32_t end = IdStreamGetWordLE(stream);
  const int32_t start = IdStreamGetWordLE(stream);
  const int32_t check = IdStreamGetWordLE(stream);
  if (end < 0 || start < 0 || check < 0 || end > kLastEnd) return kNoMatch;

  // Deliberate: start and end are 16-bit offsets, so the length wraps when the end lies before the
  // start.
  const auto bytes = static_cast<uint16_t>(end - start);
  // A range of an odd length is never left at its end, but at the end of the file.
  if (bytes == 0 || bytes % 2 != 0) return kNoMatch;
  if (IdStreamSeek(stream, static_cast<uint16_t>(start + kRangeBase), kIoFromStart) != 0) {
    return kNoMatch;
  }
  uint16_t sum = 0;
  for (uint32_t words = bytes / 2u; words > 0; --words) {
    const int32_t word = IdStreamGetWordLE(stream);
    if (word < 0) return kNoMatch;
    sum = static_cast<uint16_t>(sum + word);
  }
  // Deliberate: not reduced to 16 bits, so that no check value holds for a sum of 0.
  const int32_t expected = 1 + static_cast<uint16_t>(~sum);
  return check == expected ? kDocument : kNoMatch;
}

}  // namespace fi
