#include "probes/system/pcapng.h"

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {

FormatId PcapngProbe(IdentificationStream* stream) {
  constexpr uint32_t kSectionHeader = 0x0A0D0D0A;
  constexpr uint32_t kByteOrder = 0x1A2B3C4D;
  constexpr uint32_t kShortestBlock = 28;
  const FileBytes<12> block(stream, 0);
  if (block.DwordBE(0) != kSectionHeader) return kNoMatch;
  const bool big = block.DwordBE(8) == kByteOrder;
  if (!big && block.DwordLE(8) != kByteOrder) return kNoMatch;
  const uint32_t length = big ? block.DwordBE(4) : block.DwordLE(4);
  return length >= kShortestBlock && length % 4 == 0 ? kFormatPcapng : kNoMatch;
}

}  // namespace fi
