#include "probes/model/stl.h"

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {

FormatId StlProbe(IdentificationStream* stream) {
  constexpr int64_t kCountOffset = 80;
  constexpr uint64_t kHeaderSize = 84;
  constexpr uint64_t kTriangleSize = 50;
  const uint64_t size = FileSize(stream);
  if (size < kHeaderSize + kTriangleSize || (size - kHeaderSize) % kTriangleSize != 0) {
    return kNoMatch;
  }
  const FileBytes<4> count(stream, kCountOffset);
  return kHeaderSize + kTriangleSize * count.DwordLE(0) == size ? kFormatStlBinary : kNoMatch;
}

}  // namespace fi
