// Searches inside the stream's buffer, for scans that otherwise take single bytes. A search sees
// buffered bytes only: a scan takes a byte with IdStreamGetByte, which refills, and then passes
// over the rest of its run.
#ifndef FI_STREAM_BUFFERED_SCAN_H_
#define FI_STREAM_BUFFERED_SCAN_H_

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "stream/id_stream.h"

namespace fi {

// How many of the next buffered bytes, of `limit` at most, stand before the first `byte`.
inline uint32_t BufferedBytesBefore(const IdentificationStream* stream, char byte, uint32_t limit) {
  const uint32_t count = std::min(limit, static_cast<uint32_t>(stream->remaining));
  const void* found = std::memchr(stream->next, byte, count);
  if (found == nullptr) return count;
  return static_cast<uint32_t>(static_cast<const uint8_t*>(found) - stream->next);
}

// Passes over `count` bytes. REQUIRES: they are buffered.
inline void PassBuffered(IdentificationStream* stream, uint32_t count) {
  stream->next += count;
  stream->remaining -= static_cast<int32_t>(count);
}

}  // namespace fi

#endif  // FI_STREAM_BUFFERED_SCAN_H_
