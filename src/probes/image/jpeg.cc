#include "probes/image/jpeg.h"

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr uint8_t kFill = 0xFF;
constexpr size_t kFirstMarker = 3;
constexpr size_t kMaxFill = 8;
constexpr uint32_t kShortestSegment = 2;  // the length counts itself

constexpr uint8_t kFrameLs = 0xF7;
constexpr uint32_t kShortestFrameLs = 11;

// Segments that may come first: frame headers, tables, restart interval, application data, comment.
bool MayComeFirst(uint8_t marker) {
  return (marker >= 0xC0 && marker <= 0xCF && marker != 0xC8) || marker == 0xDB || marker == 0xDD ||
         (marker >= 0xE0 && marker <= 0xEF) || marker == 0xFE;
}

}  // namespace

FormatId JpegProbe(IdentificationStream* stream) {
  const FileBytes<kFirstMarker + kMaxFill + 3> head(stream, 0);
  size_t at = kFirstMarker;
  while (at < kFirstMarker + kMaxFill && head.Byte(at) == kFill) ++at;
  if (!head.Has(at, 3)) return kNoMatch;
  const uint32_t length = head.WordBE(at + 1);
  if (head.Byte(at) == kFrameLs) return length >= kShortestFrameLs ? kFormatJpegLs : kNoMatch;
  return MayComeFirst(head.Byte(at)) && length >= kShortestSegment ? kFormatJpeg : kNoMatch;
}

}  // namespace fi
