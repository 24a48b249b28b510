#include "probes/model/shapefile.h"

#include <algorithm>
#include <iterator>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {

FormatId ShapefileProbe(IdentificationStream* stream) {
  constexpr uint32_t kCode = 9994;
  constexpr uint32_t kVersion = 1000;
  constexpr uint32_t kShapes[] = {0, 1, 3, 5, 8, 11, 13, 15, 18, 21, 23, 25, 28, 31};
  const FileBytes<36> header(stream, 0);
  if (header.size() < 36 || header.DwordBE(0) != kCode || header.DwordLE(28) != kVersion) {
    return kNoMatch;
  }
  const uint32_t shape = header.DwordLE(32);
  if (std::find(std::begin(kShapes), std::end(kShapes), shape) == std::end(kShapes)) {
    return kNoMatch;
  }
  // In words of 16 bits.
  return uint64_t{header.DwordBE(24)} * 2 == FileSize(stream) ? kFormatShapefile : kNoMatch;
}

}  // namespace fi
