// Inflating a block of memory, for what a property is read from.
#ifndef FI_PLATFORM_INFLATE_H_
#define FI_PLATFORM_INFLATE_H_

#include <cstddef>
#include <cstdint>
#include <span>

namespace fi {

// Inflates data in zlib's wrapping (RFC 1950) into `out` until that is full, the data ends or is
// broken. Returns the number of bytes stored; what came before a fault counts.
size_t InflateZlib(std::span<const uint8_t> packed, std::span<uint8_t> out);

}  // namespace fi

#endif  // FI_PLATFORM_INFLATE_H_
