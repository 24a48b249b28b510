#include "api/properties.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string_view>

#include "formatid/identify.h"
#include "properties/families.h"
#include "properties/puid/puid.h"
#include "tables/fingerprint.h"

namespace fi {
namespace {

static_assert(kPropertyCount <= kFiMaxProperties);

// The library's version, a hyphen and sixteen hexadecimal digits.
struct RegistryVersion {
  std::array<char, 48> text{};

  RegistryVersion() {
    constexpr char kDigits[] = "0123456789abcdef";
    const std::string_view version = FIVersion();
    size_t size = version.copy(text.data(), text.size() - 18);
    text[size++] = '-';
    const uint64_t fingerprint = RegistryFingerprint();
    for (int shift = 60; shift >= 0; shift -= 4) text[size++] = kDigits[fingerprint >> shift & 0xF];
  }
};

template <size_t kSize>
void CopyText(const char* from, char (&to)[kSize]) {
  static_assert(kSize > 0);
  std::memset(to, 0, kSize);
  std::memcpy(to, from, std::min(std::strlen(from), kSize - 1));
}

}  // namespace

void ClearProperties(FIProperties* to) {
  if (to == nullptr) return;
  to->count = 0;
  to->puid[0] = '\0';
}

void FillProperties(IdentificationStream* stream, FormatId id, const char* candidates,
                    FIProperties* to) {
  PropertySet properties;
  ReadProperties({stream, id}, properties);
  for (size_t i = 0; i < kPropertyCount; ++i) {
    const PropertyValue& value = properties[static_cast<Property>(i)];
    if (!value.IsSet()) continue;
    FIProperty& item = to->items[to->count++];
    item.name = FIPropertyName(static_cast<uint32_t>(i));
    CopyText(value.text(), item.value);
    CopyText(value.place(), item.place);
    item.offset = value.offset();
  }
  const PuidText puid = ExactPuid(stream, id, properties, candidates);
  CopyText(puid.data(), to->puid);
}

}  // namespace fi

const char* FIPropertyName(uint32_t number) noexcept {
  if (number >= fi::kPropertyCount) return nullptr;
  return fi::NameOf(static_cast<fi::Property>(number)).data();
}

const char* FIRegistryVersion(void) noexcept {
  static const fi::RegistryVersion kVersion;
  return kVersion.text.data();
}
