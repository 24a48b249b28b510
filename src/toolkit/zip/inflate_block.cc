// Input that zlib does not change.
#define ZLIB_CONST
#include <zlib.h>

#include <algorithm>
#include <limits>

#include "platform/inflate.h"

namespace fi {

size_t InflateZlib(std::span<const uint8_t> packed, std::span<uint8_t> out) {
  constexpr size_t kMost = std::numeric_limits<uInt>::max();
  z_stream stream{};
  if (inflateInit(&stream) != Z_OK) return 0;
  stream.next_in = packed.data();
  stream.avail_in = static_cast<uInt>(std::min(packed.size(), kMost));
  stream.next_out = out.data();
  stream.avail_out = static_cast<uInt>(std::min(out.size(), kMost));
  const uInt room = stream.avail_out;
  (void)inflate(&stream, Z_SYNC_FLUSH);
  const size_t stored = room - stream.avail_out;
  inflateEnd(&stream);
  return stored;
}

}  // namespace fi
