// Class identifiers of storages.
#ifndef FI_PLATFORM_CLASS_ID_H_
#define FI_PLATFORM_CLASS_ID_H_

#include <array>
#include <cstdint>

namespace fi {

inline constexpr uint32_t kClassIdSize = 16;  // bytes

// In GUID memory layout: the first three fields are little-endian.
using ClassId = std::array<uint8_t, kClassIdSize>;

}  // namespace fi

#endif  // FI_PLATFORM_CLASS_ID_H_
