#include "api/extension.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "platform/io.h"

namespace fi {
namespace {

constexpr size_t kMostKept = kExtensionSize - 1;

char ToUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// Deliberate: a 16-bit character counts by its low byte, so that a Cyrillic extension folds to
// unrelated bytes. Directory separators are not looked for.
template <class Character>
Extension FoldedExtension(IOHandle* handle) {
  Extension extension{};
  std::array<Character, kIoNameCapacity> name{};
  if (!io::GetInfo(handle, kIoInfoFileName, name.data())) return extension;
  name.back() = 0;
  const auto end = std::find(name.begin(), name.end(), Character{0});
  auto dot = end;
  while (dot != name.begin() && *dot != '.') --dot;
  if (*dot != '.') return extension;
  size_t kept = 0;
  for (auto at = dot + 1; at != end && kept < kMostKept; ++at) {
    extension[kept++] = ToUpper(static_cast<char>(*at));
  }
  return extension;
}

}  // namespace

Extension ReadExtension(IOHandle* handle) {
  uint32_t width = kIoNameNarrow;
  (void)io::GetInfo(handle, kIoInfoNameWidth, &width);
  return width == kIoNameWide ? FoldedExtension<uint16_t>(handle) : FoldedExtension<char>(handle);
}

}  // namespace fi
