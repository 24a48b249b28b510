#include "probes/image/apple_icon.h"

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {

FormatId AppleIconProbe(IdentificationStream* stream) {
  constexpr uint32_t kHeaderSize = 8;
  const FileBytes<kHeaderSize> header(stream, 0);
  if (!header.Holds(0, "icns") || header.DwordBE(4) < kHeaderSize) return kNoMatch;
  return header.DwordBE(4) <= FileSize(stream) ? kFormatAppleIcon : kNoMatch;
}

}  // namespace fi
