#include "properties/record/property_set.h"

#include <charconv>

namespace fi {
namespace {

constexpr std::string_view kNames[] = {
    "version", "profile",   "encryption", "encryption_scheme", "permissions",
    "charset", "line_ends", "byte_order", "machine",           "kind",
    "signed",  "macros",    "linearized", "damaged",           "trailing_bytes",
};
static_assert(std::size(kNames) == kPropertyCount);

template <size_t kCapacity>
void Store(std::string_view text, std::array<char, kCapacity>& out) {
  size_t length = 0;
  for (const char c : text.substr(0, kCapacity - 1)) {
    out[length++] = c >= ' ' && c <= '~' ? c : '?';
  }
  out[length] = '\0';
}

}  // namespace

std::string_view NameOf(Property property) { return kNames[static_cast<size_t>(property)]; }

void PropertySet::Set(Property property, std::string_view value, std::string_view place,
                      int64_t offset) {
  if (!Has(property)) Replace(property, value, place, offset);
}

void PropertySet::Replace(Property property, std::string_view value, std::string_view place,
                          int64_t offset) {
  if (value.empty()) return;
  PropertyValue& slot = values_[static_cast<size_t>(property)];
  Store(value, slot.text_);
  Store(place, slot.place_);
  slot.offset_ = offset;
  slot.isSet_ = true;
}

void PropertySet::SetNumber(Property property, uint64_t value, std::string_view place,
                            int64_t offset) {
  std::array<char, 20> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  Set(property, {digits.data(), static_cast<size_t>(end - digits.data())}, place, offset);
}

}  // namespace fi
