// Numbers of an encrypted package: little-endian.
#ifndef FI_TOOLKIT_CRYPTO_LITTLE_ENDIAN_H_
#define FI_TOOLKIT_CRYPTO_LITTLE_ENDIAN_H_

#include <array>
#include <cstddef>
#include <cstdint>

#include "toolkit/openssl/secret_bytes.h"

namespace fi::crypto {

// REQUIRES: offset + kCount <= bytes.size().
template <size_t kCount>
uint64_t LoadLE(Bytes bytes, size_t offset) {
  uint64_t value = 0;
  for (size_t i = kCount; i > 0; --i) value = value << 8 | bytes[offset + i - 1];
  return value;
}

inline std::array<uint8_t, 4> StoreLE32(uint32_t value) {
  return {static_cast<uint8_t>(value), static_cast<uint8_t>(value >> 8),
          static_cast<uint8_t>(value >> 16), static_cast<uint8_t>(value >> 24)};
}

}  // namespace fi::crypto

#endif  // FI_TOOLKIT_CRYPTO_LITTLE_ENDIAN_H_
