#include "probes/media/transport_stream.h"

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr uint8_t kSync = 0x47;
constexpr uint8_t kContentBits = 0x30;  // an adaptation field, a payload or both
constexpr size_t kPacketSize = 188;
constexpr size_t kTimeStampSize = 4;
constexpr size_t kPackets = 5;

using Packets = FileBytes<kPackets*(kPacketSize + kTimeStampSize)>;

bool HasPackets(const Packets& file, size_t first, size_t distance) {
  for (size_t i = 0; i < kPackets; ++i) {
    const size_t at = first + i * distance;
    if (file.Byte(at) != kSync || (file.Byte(at + 3) & kContentBits) == 0) return false;
  }
  return true;
}

}  // namespace

FormatId TransportStreamProbe(IdentificationStream* stream) {
  const Packets file(stream, 0);
  const bool matches = HasPackets(file, 0, kPacketSize) ||
                       HasPackets(file, kTimeStampSize, kPacketSize + kTimeStampSize);
  return matches ? kFormatMpegTransportStream : kNoMatch;
}

}  // namespace fi
