// Short ways to write file bytes in tests.
#ifndef FI_TESTS_SUPPORT_BYTES_H_
#define FI_TESTS_SUPPORT_BYTES_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace fi::testing {

// A literal with its NULs.
template <size_t kSize>
std::string Bytes(const char (&literal)[kSize]) {
  return std::string(literal, kSize - 1);
}

struct Patch {
  size_t offset;
  std::string bytes;
};

// `size` bytes of `fill`, or as many as the patches need, with the patches laid over them.
inline std::string File(const std::vector<Patch>& patches, size_t size = 0, char fill = 'x') {
  std::string file(size, fill);
  for (const Patch& patch : patches) {
    if (file.size() < patch.offset + patch.bytes.size()) {
      file.resize(patch.offset + patch.bytes.size(), fill);
    }
    file.replace(patch.offset, patch.bytes.size(), patch.bytes);
  }
  return file;
}

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_BYTES_H_
