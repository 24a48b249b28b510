#include "probes/storage/publisher.h"

#include <array>

#include "registry/format_ids.h"
#include "stream/child_stream.h"

namespace fi {

FormatId ProbeContentsStream(IdentificationStream* stream) {
  const ChildStream child(stream->handle, "Contents");
  if (!child) return kNoMatch;
  std::array<uint32_t, 4> bytes;
  for (uint32_t& byte : bytes) byte = IdStreamGetByte(child.get());
  if (bytes[0] != 0xE8 || bytes[1] != 0xAC || bytes[3] != 0x00) return kNoMatch;
  if (bytes[2] == 0x22) return kFormatPublisher2To2000;
  if (bytes[2] == 0x2C) return kFormatPublisher2002;
  return kNoMatch;
}

}  // namespace fi
