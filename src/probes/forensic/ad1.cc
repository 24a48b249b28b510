#include "probes/forensic/ad1.h"

#include "formatid/io.h"
#include "registry/format_ids.h"

namespace fi {
namespace {

bool SeekTo(IdentificationStream* stream, int64_t offset) {
  return IdStreamSeek(stream, offset, kIoFromStart) == 0;
}

}  // namespace

FormatId Ad1Probe(IdentificationStream* stream) {
  constexpr uint32_t kHeaderSize = 512;
  uint32_t segment = 0;
  if (!SeekTo(stream, 24) || IdStreamGetDwordLE(stream, &segment) != 0) return kNoMatch;
  uint32_t headerSize = 0;
  if (!SeekTo(stream, 40) || IdStreamGetDwordLE(stream, &headerSize) != 0) return kNoMatch;
  if (headerSize != kHeaderSize || segment == 0) return kNoMatch;
  return segment == 1 ? kFormatAd1First : kFormatAd1Later;
}

FormatId Ad1EncryptedProbe(IdentificationStream* stream) {
  if (!SeekTo(stream, 8) || IdStreamGetWordLE(stream) != 1) return kNoMatch;
  if (!SeekTo(stream, 22) || IdStreamGetWordLE(stream) != 0) return kNoMatch;
  uint32_t cipher = 0;
  if (!SeekTo(stream, 24) || IdStreamGetDwordLE(stream, &cipher) != 0) return kNoMatch;
  uint32_t hash = 0;
  if (IdStreamGetDwordLE(stream, &hash) != 0) return kNoMatch;
  const bool known = cipher >= 1 && cipher <= 3 && hash >= 1 && hash <= 2;
  return known ? kFormatAd1Encrypted : kNoMatch;
}

}  // namespace fi
