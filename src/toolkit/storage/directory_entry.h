// One entry of a compound file's directory: 128 bytes.
#ifndef FI_TOOLKIT_STORAGE_DIRECTORY_ENTRY_H_
#define FI_TOOLKIT_STORAGE_DIRECTORY_ENTRY_H_

#include <array>
#include <cstdint>

#include "platform/class_id.h"

namespace fi::storage {

inline constexpr uint32_t kEntryShift = 7;
inline constexpr uint32_t kEntrySize = 1 << kEntryShift;

// A word of an entry that leads to no other.
inline constexpr uint32_t kNoEntry = 0xFFFFFFFF;

enum class EntryKind : uint8_t { kUnused = 0, kStorage = 1, kStream = 2, kRoot = 5 };

// A name of up to 31 UTF-16 units.
struct EntryName {
  static constexpr uint32_t kMaxUnits = 31;

  std::array<uint16_t, kMaxUnits> units;  // those behind the length mean nothing
  uint32_t length = 0;

  // Widens a narrow name byte by byte. False when it is empty or too long to be in a directory.
  static bool Widen(const char* narrow, EntryName* name);

  // The other way, NUL-terminated; units above 255 become "?".
  std::array<char, kMaxUnits + 1> Narrow() const;
};

// Negative, 0 or positive: the order in which the format keeps names. The shorter one is first;
// names of one length go by their upper-cased units. Folded are the small letters of Latin-1: a
// narrow name has no others. Where a writer folds more, its tree may look out of order, and is gone
// through whole.
int CompareNames(const EntryName& a, const EntryName& b);

struct DirectoryEntry {
  EntryName name;
  EntryKind kind = EntryKind::kUnused;
  uint32_t left = kNoEntry;   // siblings with names before this one's
  uint32_t right = kNoEntry;  // siblings with names behind it
  uint32_t child = kNoEntry;  // of a storage: an entry in it, from which all its others are reached
  ClassId classId{};
  uint32_t start = 0;  // the first sector
  uint64_t size = 0;   // bytes, as claimed
};

// `bytes` are kEntrySize. Version 3 writers leave garbage in the upper half of the size; it is used
// where `wideSize` says so.
DirectoryEntry ParseEntry(const uint8_t* bytes, bool wideSize);

// Of the kEntrySize bytes of an entry, without the rest of it.
uint32_t LeftOf(const uint8_t* entry);
bool IsUsed(const uint8_t* entry);

}  // namespace fi::storage

#endif  // FI_TOOLKIT_STORAGE_DIRECTORY_ENTRY_H_
