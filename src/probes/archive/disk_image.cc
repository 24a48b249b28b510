#include "probes/archive/disk_image.h"

#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr uint64_t kSectorSize = 2048;
constexpr uint64_t kFirstDescriptor = 16 * kSectorSize;
constexpr uint64_t kTrailerSize = 512;

using Trailer = FileBytes<16>;

bool IsVolumeDescriptor(uint8_t type) { return type <= 3 || type == 255; }

// Volumes of UDF alone have, between their own marks, a descriptor whose last digit is the
// revision.
bool HasUdfDescriptor(IdentificationStream* stream) {
  constexpr uint32_t kSectors = 2;
  for (uint32_t i = 1; i <= kSectors; ++i) {
    const FileBytes<6> mark(stream, static_cast<int64_t>(kFirstDescriptor + i * kSectorSize));
    if (mark.Holds(1, "NSR0")) return true;
  }
  return false;
}

bool IsVhdTrailer(const Trailer& trailer) {
  constexpr uint32_t kReservedFeature = 2;  // always set
  constexpr uint32_t kVersion = 0x00010000;
  return trailer.Holds(0, "conectix") && (trailer.DwordBE(8) & kReservedFeature) != 0 &&
         trailer.DwordBE(12) == kVersion;
}

Trailer ReadTrailer(IdentificationStream* stream, uint64_t fileSize) {
  return Trailer(stream, static_cast<int64_t>(fileSize - kTrailerSize));
}

}  // namespace

FormatId OpticalDiscProbe(IdentificationStream* stream) {
  if (FileSize(stream) < kFirstDescriptor + kSectorSize) return kNoMatch;
  const FileBytes<6> mark(stream, static_cast<int64_t>(kFirstDescriptor));
  if (mark.Holds(1, "CD001") && IsVolumeDescriptor(mark.Byte(0))) return kFormatIso9660;
  return mark.Holds(1, "BEA01") && HasUdfDescriptor(stream) ? kFormatIso9660 : kNoMatch;
}

FormatId AppleDiskImageProbe(IdentificationStream* stream) {
  constexpr uint32_t kVersion = 4;
  const uint64_t size = FileSize(stream);
  if (size < kTrailerSize) return kNoMatch;
  const Trailer trailer = ReadTrailer(stream, size);
  const bool matches = trailer.Holds(0, "koly") && trailer.DwordBE(4) == kVersion &&
                       trailer.DwordBE(8) == kTrailerSize;
  return matches ? kFormatAppleDiskImage : kNoMatch;
}

FormatId VirtualHardDiskProbe(IdentificationStream* stream) {
  const uint64_t size = FileSize(stream);
  if (size < kTrailerSize) return kNoMatch;
  const bool matches = IsVhdTrailer(Trailer(stream, 0)) || IsVhdTrailer(ReadTrailer(stream, size));
  return matches ? kFormatVhd : kNoMatch;
}

}  // namespace fi
