#include "probes/image/pict.h"

#include "formatid/io.h"
#include "registry/format_ids.h"

namespace fi {
namespace {

constexpr int32_t kHeaderSize = 12;
constexpr int32_t kVersion1 = 0x1101;
constexpr int32_t kVersion2 = 0x0011;
constexpr int32_t kVersion2Mark = 0x02FF;
constexpr int32_t kHeaderOpcode = 0x0C00;

}  // namespace

FormatId PictHeaderProbe(IdentificationStream* stream) {
  if (IdStreamSeek(stream, 0, kIoFromStart) != 0) return kNoMatch;
  // Pictures above 64 KB do not fit their size in; 0 stands for that in some.
  const int32_t size = IdStreamGetWordBE(stream);
  if (size < 0 || (size > 0 && size <= kHeaderSize)) return kNoMatch;
  const int32_t top = IdStreamGetWordBE(stream);
  const int32_t left = IdStreamGetWordBE(stream);
  const int32_t bottom = IdStreamGetWordBE(stream);
  const int32_t right = IdStreamGetWordBE(stream);
  // Deliberate: unsigned, so that a frame from a negative corner to a positive one is refused.
  if (top >= bottom || left >= right) return kNoMatch;
  const int32_t version = IdStreamGetWordBE(stream);
  if (version == kVersion1) return kFormatPictBare;
  if (version != kVersion2 || IdStreamGetWordBE(stream) != kVersion2Mark) return kNoMatch;
  return IdStreamGetWordBE(stream) == kHeaderOpcode ? kFormatPictBare : kNoMatch;
}

}  // namespace fi
