#include "probes/print/eps_preview.h"

#include "formatid/io.h"
#include "registry/format_ids.h"

namespace fi {

FormatId EpsPreviewProbe(IdentificationStream* stream) {
  constexpr uint32_t kMagic[] = {0xC5, 0xD0, 0xD3, 0xC6};
  constexpr uint16_t kBytesToPreview = 16;  // place and length of the PostScript and the metafile
  constexpr uint32_t kOffsetBytes = 4;
  if (IdStreamSeek(stream, 0, kIoFromStart) != 0) return kNoMatch;
  for (const uint32_t byte : kMagic) {
    if (IdStreamGetByte(stream) != byte) return kNoMatch;
  }
  (void)IdStreamSkip(kBytesToPreview, stream);
  // Deliberate: a header that is cut short counts as one with a preview, as the end of the data is
  // not 0.
  for (uint32_t i = 0; i < kOffsetBytes; ++i) {
    if (IdStreamGetByte(stream) != 0) return kFormatEpsWithTiffPreview;
  }
  return kNoMatch;
}

}  // namespace fi
