#include "probes/drawing/dwf.h"

#include "formatid/io.h"
#include "registry/format_ids.h"

namespace fi {

FormatId DwfProbe(IdentificationStream* stream) {
  constexpr uint32_t kVersionOffset = 6;
  constexpr uint32_t kMaxBytes = 5;
  constexpr uint16_t kFirstOfDwf6 = 6;
  if (IdStreamSeek(stream, kVersionOffset, kIoFromStart) != 0) return kNoMatch;
  // Deliberate: any byte counts as a digit, the end of the data too, and the value wraps at 16
  // bits.
  uint16_t version = 0;
  for (uint32_t i = 0; i < kMaxBytes; ++i) {
    const uint32_t byte = IdStreamGetByte(stream);
    if (byte == '.') break;
    version = static_cast<uint16_t>(version * 10u + (byte - '0'));
  }
  return version < kFirstOfDwf6 ? kFormatDwfBelow6 : kFormatDwf6;
}

}  // namespace fi
