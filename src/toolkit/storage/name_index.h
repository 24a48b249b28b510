// The entries of one storage by a number of 32 bits for each name: looking for a name passes over
// the numbers instead of reading entries.
#ifndef FI_TOOLKIT_STORAGE_NAME_INDEX_H_
#define FI_TOOLKIT_STORAGE_NAME_INDEX_H_

#include <cstddef>
#include <cstdint>

#include "toolkit/memory/growing_array.h"
#include "toolkit/storage/directory_entry.h"

namespace fi::storage {

// A number that names share which CompareNames takes for the same.
uint32_t KeyOf(const EntryName& name);

class NameIndex {
 public:
  // Adds an entry behind those that are there. False without memory.
  bool Add(uint32_t key, uint32_t id) { return keys_.Append(key) && ids_.Append(id); }

  void Clear() {
    keys_.Clear();
    ids_.Clear();
  }

  // The place of the first entry of that key from place `from` on; size() when there is none.
  size_t Find(uint32_t key, size_t from) const;

  size_t size() const { return ids_.size(); }
  uint32_t IdAt(size_t place) const { return ids_[place]; }

 private:
  GrowingArray<uint32_t> keys_;
  GrowingArray<uint32_t> ids_;
};

}  // namespace fi::storage

#endif  // FI_TOOLKIT_STORAGE_NAME_INDEX_H_
