#include "probes/font/opentype.h"

#include "probes/font/sfnt.h"
#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {

FormatId FontCollectionProbe(IdentificationStream* stream) {
  constexpr uint32_t kVersion1 = 0x00010000;
  constexpr uint32_t kVersion2 = 0x00020000;
  constexpr uint32_t kMaxFonts = 1024;
  constexpr uint32_t kPlaces = 12;
  const FileBytes<kPlaces + 4> header(stream, 0);
  if (header.DwordBE(4) != kVersion1 && header.DwordBE(4) != kVersion2) return kNoMatch;
  const uint32_t fonts = header.DwordBE(8);
  const uint32_t first = header.DwordBE(kPlaces);
  if (fonts == 0 || fonts > kMaxFonts || first < kPlaces + 4 * fonts) return kNoMatch;
  return SfntDirectoryProbe(stream, first) ? kFormatTrueTypeCollection : kNoMatch;
}

FormatId OpenTypeCffProbe(IdentificationStream* stream) {
  const bool matches = FileBytes<4>(stream, 0).Holds(0, "OTTO") && SfntDirectoryProbe(stream, 0);
  return matches ? kFormatOpenTypeCff : kNoMatch;
}

}  // namespace fi
