// Decompressing a block of LZMA data in memory, for what a property is read from.
#ifndef FI_PLATFORM_LZMA_H_
#define FI_PLATFORM_LZMA_H_

#include <cstddef>
#include <cstdint>
#include <span>

namespace fi {

// LZMA data without a header, as 7z archives hold it; `properties` are the five bytes that describe
// the coder. Decompresses into `out` until that is full, the data ends or is broken, with a window
// no larger than `out`. Returns the number of bytes stored: none where the system has no liblzma.
size_t DecompressLzma(std::span<const uint8_t> properties, std::span<const uint8_t> packed,
                      std::span<uint8_t> out);

}  // namespace fi

#endif  // FI_PLATFORM_LZMA_H_
