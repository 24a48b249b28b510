// Short ways to write file bytes in tests.
#ifndef FI_TESTS_SUPPORT_BYTES_H_
#define FI_TESTS_SUPPORT_BYTES_H_

#include <cstddef>
#include <cstdint>
#include <string>

namespace fi::testing {

// A literal with its NULs.
template <size_t kSize>
std::string Bytes(const char (&literal)[kSize]) {
  return std::string(literal, kSize - 1);
}

// `size` bytes of a number, the lowest first.
inline std::string LittleEndian(uint64_t value, size_t size) {
  std::string bytes;
  for (; bytes.size() < size; value >>= 8) bytes.push_back(static_cast<char>(value & 0xFF));
  return bytes;
}

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_BYTES_H_
