#include "probes/media/adts.h"

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {

bool HasAdtsFrames(IdentificationStream* stream, int64_t at) {
  constexpr uint32_t kFrames = 3;
  constexpr size_t kHeaderSize = 7;
  constexpr uint32_t kSyncAndLayer = 0xFFF60000;  // the layer is 0
  constexpr uint32_t kSync = 0xFFF00000;
  constexpr uint32_t kCommonBits = 0xFFFFFC00;  // all up to the sampling rate
  constexpr uint32_t kSamplingRates = 13;
  uint32_t first = 0;
  for (uint32_t i = 0; i < kFrames; ++i) {
    const FileBytes<kHeaderSize> header(stream, at);
    const uint32_t bits = header.DwordBE(0);
    if (header.size() < kHeaderSize || (bits & kSyncAndLayer) != kSync) return false;
    if (i == 0) first = bits;
    if (((bits ^ first) & kCommonBits) != 0 || (bits >> 10 & 15) >= kSamplingRates) return false;
    const uint32_t length = header.DwordBE(3) >> 13 & 0x1FFF;
    if (length < kHeaderSize) return false;
    at += length;
  }
  return true;
}

FormatId AdtsProbe(IdentificationStream* stream) {
  return HasAdtsFrames(stream, 0) ? kFormatAac : kNoMatch;
}

}  // namespace fi
