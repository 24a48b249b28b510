// Little-endian numbers, at any alignment.
#ifndef FI_TOOLKIT_MEMORY_LITTLE_ENDIAN_H_
#define FI_TOOLKIT_MEMORY_LITTLE_ENDIAN_H_

#include <cstdint>

namespace fi {

inline uint16_t LoadLE16(const uint8_t* bytes) {
  return static_cast<uint16_t>(bytes[0] | bytes[1] << 8);
}

inline uint32_t LoadLE32(const uint8_t* bytes) {
  return LoadLE16(bytes) | static_cast<uint32_t>(LoadLE16(bytes + 2)) << 16;
}

inline uint64_t LoadLE64(const uint8_t* bytes) {
  return LoadLE32(bytes) | static_cast<uint64_t>(LoadLE32(bytes + 4)) << 32;
}

}  // namespace fi

#endif  // FI_TOOLKIT_MEMORY_LITTLE_ENDIAN_H_
