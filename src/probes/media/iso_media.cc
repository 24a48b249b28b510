#include "probes/media/iso_media.h"

#include "formatid/io.h"
#include "registry/format_ids.h"

namespace fi {
namespace {

constexpr uint32_t FourCharacters(const char (&code)[5]) {
  uint32_t value = 0;
  for (size_t i = 0; i < 4; ++i) value = value << 8 | static_cast<uint8_t>(code[i]);
  return value;
}

constexpr uint32_t kFileType = FourCharacters("ftyp");

// Size, type, major brand and minor version, behind which the compatible brands stand.
constexpr uint32_t kFixedSize = 16;
constexpr uint16_t kMinorVersionSize = 4;

// How much of a list of brands is walked; real ones hold a few dozen bytes.
constexpr uint32_t kMaxBrandBytes = 64 * 1024;

// The identifier of a brand that decides wherever it stands, or kNoMatch.
FormatId IdOfBrand(uint32_t brand) {
  switch (brand) {
    case FourCharacters("mp41"):
    case FourCharacters("mp42"):
      return kFormatMp4;
    case FourCharacters("mp71"):
      return kFormatMp4Mpeg7;
    case FourCharacters("qt  "):
      return kFormatQuickTimeMovie;
    default:
      return kNoMatch;
  }
}

// Walks the compatible brands in a box of `size` bytes. `brand` is the major brand.
FormatId IdOfCompatibleBrands(IdentificationStream* stream, uint32_t size, uint32_t brand) {
  bool more = true;
  for (uint32_t walked = 0; more && walked < size - kFixedSize && walked < kMaxBrandBytes;
       walked += 4) {
    // Deliberate: when the data end here, the brand before is tested again, as a compatible brand
    // even if it was the major brand.
    more = IdStreamGetDwordBE(stream, &brand) == 0;
    if (brand == FourCharacters("heic")) return kFormatHeif;
    if (const FormatId id = IdOfBrand(brand); id != kNoMatch) return id;
  }
  return kFormatIsoMedia;
}

}  // namespace

FormatId IsoMediaProbe(IdentificationStream* stream) {
  if (IdStreamSeek(stream, 0, kIoFromStart) != 0) return kNoMatch;
  uint32_t size = 0;
  if (IdStreamGetDwordBE(stream, &size) != 0 || size < kFixedSize) return kNoMatch;
  uint32_t type = 0;
  if (IdStreamGetDwordBE(stream, &type) != 0 || type != kFileType) return kNoMatch;
  uint32_t brand = 0;
  (void)IdStreamGetDwordBE(stream, &brand);
  // Deliberate: "heim" counts as the major brand only, "heic" as a compatible one only.
  if (brand == FourCharacters("heim")) return kFormatHeif;
  if (const FormatId id = IdOfBrand(brand); id != kNoMatch) return id;
  (void)IdStreamSkip(kMinorVersionSize, stream);
  return IdOfCompatibleBrands(stream, size, brand);
}

}  // namespace fi
