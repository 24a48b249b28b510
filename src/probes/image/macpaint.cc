#include "probes/image/macpaint.h"

#include <algorithm>
#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr size_t kHeaderSize = 512;
constexpr size_t kPatternsEnd = 308;  // behind 38 patterns of 8 bytes; zeros follow
constexpr size_t kLineSize = 72;
constexpr uint32_t kLines = 720;

// A line takes 73 bytes when nothing in it repeats; what stands behind the last one is padding.
constexpr uint64_t kLongestFile = kHeaderSize + kLines * (kLineSize + 1) + 4096;

// How much packed data is looked at, and how many whole lines of it are proof enough: a picture
// without patterns of its own has to show more.
constexpr size_t kPackedSize = 2048;
constexpr uint32_t kLinesNeeded = 16;
constexpr uint32_t kLinesNeededWithoutPatterns = 32;

// Whole lines at the start of `packed`; 0 when one does not end where a line does, or when nothing
// is packed, or no pixel set, in any. A page that is empty has to be whole.
uint32_t CountLines(std::string_view packed) {
  constexpr uint8_t kNothing = 128;
  uint32_t lines = 0;
  size_t column = 0;
  bool hasRuns = false;
  bool hasPixels = false;
  for (size_t pos = 0; pos < packed.size() && lines < kLines;) {
    const auto control = static_cast<uint8_t>(packed[pos++]);
    if (control == kNothing) continue;
    const bool isRun = control > kNothing;
    const size_t count = isRun ? size_t{257} - control : size_t{control} + 1;
    const size_t stored = isRun ? 1 : count;
    if (count > kLineSize - column) return 0;
    if (stored > packed.size() - pos) break;
    const std::string_view bytes = packed.substr(pos, stored);
    hasRuns |= isRun;
    hasPixels |= std::any_of(bytes.begin(), bytes.end(), [](char byte) { return byte != 0; });
    pos += stored;
    column += count;
    if (column < kLineSize) continue;
    column = 0;
    ++lines;
  }
  return hasRuns && (hasPixels || lines == kLines) ? lines : 0;
}

}  // namespace

FormatId MacPaintProbe(IdentificationStream* stream) {
  // Nearly every file ends here: the version is 0, 2 or 3.
  if (IdStreamSeek(stream, 0, kIoFromStart) != 0) return kNoMatch;
  uint32_t version = 0;
  if (IdStreamGetDwordBE(stream, &version) != 0 || version == 1 || version > 3) return kNoMatch;
  const uint64_t size = FileSize(stream);
  if (size <= kHeaderSize || size > kLongestFile) return kNoMatch;
  const FileBytes<kHeaderSize + kPackedSize> file(stream, 0);
  const std::string_view bytes = file.View();
  if (bytes.size() <= kHeaderSize) return kNoMatch;
  const auto isZero = [](char byte) { return byte == 0; };
  if (!std::all_of(bytes.begin() + kPatternsEnd, bytes.begin() + kHeaderSize, isZero)) {
    return kNoMatch;
  }
  const bool hasPatterns =
      version != 0 || !std::all_of(bytes.begin() + 4, bytes.begin() + kPatternsEnd, isZero);
  const uint32_t needed = hasPatterns ? kLinesNeeded : kLinesNeededWithoutPatterns;
  return CountLines(bytes.substr(kHeaderSize)) >= needed ? kFormatMacPaint : kNoMatch;
}

}  // namespace fi
