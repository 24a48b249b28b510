// The names and facts of the formats, from the one list of them.

#include <algorithm>
#include <cstring>
#include <iterator>

#include "formatid/platform.h"

namespace {

constexpr FIFormatFacts kFormats[] = {
#define FI_FORMAT(number, symbol, name, category, mime, extensions, puids) \
  {number, name, category, mime, extensions, puids},
#define FI_FORMAT_UNNAMED(number, name, category, mime, extensions, puids) \
  {number, name, category, mime, extensions, puids},
#include "registry/formats.def"
};

constexpr bool IsSorted() {
  for (size_t i = 1; i < std::size(kFormats); ++i) {
    if (kFormats[i - 1].id >= kFormats[i].id) return false;
  }
  return true;
}
static_assert(IsSorted(), "formats.def is searched by number");

// String resources of names are numbered by the identifier with this bit set.
constexpr uint32_t kNameResource = 0x10000;
constexpr uint32_t kNotFound = 1;

const FIFormatFacts* Find(uint32_t id) {
  const auto* found = std::lower_bound(
      std::begin(kFormats), std::end(kFormats), id,
      [](const FIFormatFacts& facts, uint32_t wanted) { return facts.id < wanted; });
  return found != std::end(kFormats) && found->id == id ? found : nullptr;
}

}  // namespace

uint32_t UTGetString(uint32_t id, char* buffer, uint16_t size, uint32_t /*flags*/) noexcept {
  const FIFormatFacts* facts = id >> 16 == 1 ? Find(id & ~kNameResource) : nullptr;
  if (buffer != nullptr && size > 0) {
    const char* name = facts != nullptr ? facts->name : "";
    const size_t length = std::min<size_t>(std::strlen(name), size - 1u);
    std::memcpy(buffer, name, length);
    buffer[length] = '\0';
  }
  return facts != nullptr ? 0 : kNotFound;
}

uint32_t UTGetFormatFacts(FormatId id, FIFormatFacts* facts) noexcept {
  const FIFormatFacts* found = Find(id);
  if (found == nullptr || facts == nullptr) return kNotFound;
  *facts = *found;
  return 0;
}
