#include "toolkit/storage/directory_entry.h"

#include <algorithm>
#include <cstring>

#include "toolkit/memory/little_endian.h"

namespace fi::storage {
namespace {

// Offsets in an entry.
constexpr uint32_t kNameLength = 64;
constexpr uint32_t kKind = 66;
constexpr uint32_t kLeft = 68;
constexpr uint32_t kRight = 72;
constexpr uint32_t kChild = 76;
constexpr uint32_t kClassId = 80;
constexpr uint32_t kStart = 116;
constexpr uint32_t kSize = 120;

uint16_t UpperCase(uint16_t unit) {
  constexpr uint16_t kDivisionSign = 0xF7;
  constexpr uint16_t kSmallYDiaeresis = 0xFF;
  constexpr uint16_t kCapitalYDiaeresis = 0x178;
  const bool ascii = unit >= 'a' && unit <= 'z';
  const bool latin = unit >= 0xE0 && unit < kSmallYDiaeresis && unit != kDivisionSign;
  if (ascii || latin) return static_cast<uint16_t>(unit - 0x20);
  return unit == kSmallYDiaeresis ? kCapitalYDiaeresis : unit;
}

// The length counts bytes and the NUL at the end. One that cannot be leaves the name as empty or as
// long as there is room: such an entry is found only by the same bytes.
uint32_t UnitsOfName(uint16_t length) {
  return length < 2 ? 0 : std::min<uint32_t>(length / 2u - 1, EntryName::kMaxUnits);
}

}  // namespace

uint32_t LeftOf(const uint8_t* entry) { return LoadLE32(entry + kLeft); }

bool IsUsed(const uint8_t* entry) { return EntryKind{entry[kKind]} != EntryKind::kUnused; }

bool EntryName::Widen(const char* narrow, EntryName* name) {
  const size_t length = ::strnlen(narrow, kMaxUnits + 1);
  if (length == 0 || length > kMaxUnits) return false;
  for (size_t i = 0; i < length; ++i) name->units[i] = static_cast<uint8_t>(narrow[i]);
  name->length = static_cast<uint32_t>(length);
  return true;
}

std::array<char, EntryName::kMaxUnits + 1> EntryName::Narrow() const {
  std::array<char, kMaxUnits + 1> narrow{};
  for (uint32_t i = 0; i < length; ++i) {
    narrow[i] = units[i] > 0xFF ? '?' : static_cast<char>(units[i]);
  }
  return narrow;
}

int CompareNames(const EntryName& a, const EntryName& b) {
  if (a.length != b.length) return a.length < b.length ? -1 : 1;
  for (uint32_t i = 0; i < a.length; ++i) {
    if (a.units[i] == b.units[i]) continue;
    const uint16_t left = UpperCase(a.units[i]);
    const uint16_t right = UpperCase(b.units[i]);
    if (left != right) return left < right ? -1 : 1;
  }
  return 0;
}

DirectoryEntry ParseEntry(const uint8_t* bytes, bool wideSize) {
  DirectoryEntry entry;
  entry.name.length = UnitsOfName(LoadLE16(bytes + kNameLength));
  // All units, used or not: a copy of fixed size is the cheapest.
  for (uint32_t i = 0; i < EntryName::kMaxUnits; ++i) entry.name.units[i] = LoadLE16(bytes + i * 2);
  entry.kind = EntryKind{bytes[kKind]};
  entry.left = LoadLE32(bytes + kLeft);
  entry.right = LoadLE32(bytes + kRight);
  entry.child = LoadLE32(bytes + kChild);
  std::memcpy(entry.classId.data(), bytes + kClassId, entry.classId.size());
  entry.start = LoadLE32(bytes + kStart);
  entry.size = wideSize ? LoadLE64(bytes + kSize) : LoadLE32(bytes + kSize);
  return entry;
}

}  // namespace fi::storage
