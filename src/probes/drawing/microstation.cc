#include "probes/drawing/microstation.h"

#include "formatid/io.h"
#include "registry/format_ids.h"

namespace fi {

FormatId MicroStationProbe(IdentificationStream* stream) {
  constexpr int32_t kFirstType = 8;
  constexpr int32_t kLastType = 10;
  constexpr uint32_t kRecords = 3;
  if (IdStreamSeek(stream, 0, kIoFromStart) != 0) return kNoMatch;
  uint32_t seen = 0;
  for (uint32_t i = 0; i < kRecords; ++i) {
    const int32_t head = IdStreamGetWordLE(stream);
    if (head < 0) return kNoMatch;
    // The top bit marks a deleted element, the low byte its level.
    const int32_t type = head >> 8 & 0x7F;
    if (type < kFirstType || type > kLastType) return kNoMatch;
    // Each of the three types stands once.
    const uint32_t bit = 1u << (type - kFirstType);
    if ((seen & bit) != 0) return kNoMatch;
    seen |= bit;
    const int32_t words = IdStreamGetWordLE(stream);
    if (words < 0) return kNoMatch;
    if (i + 1 < kRecords && IdStreamSeek(stream, int64_t{words} * 2, kIoFromCurrent) != 0) {
      return kNoMatch;
    }
  }
  return kFormatMicroStationDesign7;
}

}  // namespace fi
