#include "probes/system/resource_fork.h"

#include <cstdint>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {

FormatId ResourceForkProbe(IdentificationStream* stream) {
  constexpr uint64_t kDataStart = 256;
  constexpr uint64_t kSmallestMap = 30;
  const FileBytes<16> header(stream, 0);
  const uint64_t map = header.DwordBE(4);
  const uint64_t mapLength = header.DwordBE(12);
  const bool matches = header.DwordBE(0) == kDataStart &&
                       map == kDataStart + uint64_t{header.DwordBE(8)} &&
                       mapLength >= kSmallestMap && map + mapLength <= FileSize(stream);
  return matches ? kFormatResourceFork : kNoMatch;
}

}  // namespace fi
