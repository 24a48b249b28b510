#include "toolkit/storage/name_index.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace fi::storage {

// Of the length and the last eight units, in which the names of properties differ.
uint32_t KeyOf(const EntryName& name) {
  constexpr uint32_t kUnits = sizeof(uint64_t) / sizeof(name.units[0]);
  constexpr uint64_t kLowerCase = 0x0020002000200020;
  constexpr uint64_t kBeyondAscii = 0xFF80FF80FF80FF80;
  constexpr uint64_t kSpread = 0x9E3779B97F4A7C15;
  const uint32_t length = name.length;
  const uint32_t from = length < 2 * kUnits ? 0 : length - 2 * kUnits;
  std::array<uint64_t, 2> units;
  std::memcpy(units.data(), name.units.data() + from, sizeof(units));
  if (length < kUnits) units[0] &= (uint64_t{1} << (16 * length)) - 1;
  if (length < 2 * kUnits) {
    units[1] &= length <= kUnits ? 0 : (uint64_t{1} << (16 * (length - kUnits))) - 1;
  }
  // Beyond ASCII, cases differ in more than a bit.
  if (((units[0] | units[1]) & kBeyondAscii) != 0) return length;
  const uint64_t mixed = (units[0] | kLowerCase) * kSpread ^ (units[1] | kLowerCase);
  return static_cast<uint32_t>((mixed * kSpread) >> 32) + length;
}

size_t NameIndex::Find(uint32_t key, size_t from) const {
  return static_cast<size_t>(std::find(keys_.begin() + from, keys_.end(), key) - keys_.begin());
}

}  // namespace fi::storage
