#include "probes/media/asf.h"

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {

FormatId AsfProbe(IdentificationStream* stream) {
  constexpr uint64_t kHeaderSize = 30;
  constexpr uint32_t kMaxObjects = 4096;
  constexpr uint32_t kReserved = 0x0102;
  const FileBytes<kHeaderSize> header(stream, 0);
  if (header.size() < kHeaderSize) return kNoMatch;
  const uint64_t size = header.DwordLE(16) | uint64_t{header.DwordLE(20)} << 32;
  // The mark of 16 bytes is proof enough for a file that is cut short.
  if (size < kHeaderSize) return kNoMatch;
  const uint32_t objects = header.DwordLE(24);
  if (objects == 0 || objects > kMaxObjects || header.WordBE(28) != kReserved) return kNoMatch;
  return kFormatAsf;
}

}  // namespace fi
