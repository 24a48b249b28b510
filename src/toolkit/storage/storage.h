// A storage: a folder of a compound file, whose entries are found by name.
#ifndef FI_TOOLKIT_STORAGE_STORAGE_H_
#define FI_TOOLKIT_STORAGE_STORAGE_H_

#include <cstdint>

#include "formatid/io.h"
#include "toolkit/io/containers.h"
#include "toolkit/storage/directory_entry.h"
#include "toolkit/storage/name_index.h"

namespace fi::storage {

class CompoundFile;

// Entries of a storage that a search examines at most. A balanced tree of so many entries has a
// depth of 11, so only files without order reach the limit.
inline constexpr uint32_t kMaxSiblings = 1024;

// Blocks of 4 KB that a search reads of directory and tables at most.
inline constexpr uint32_t kMaxSearchLoads = 1024;

class Storage final : public io::StorageView {
 public:
  // `entry` is that of a storage or the root. `file` is borrowed.
  Storage(CompoundFile& file, const DirectoryEntry& entry);

  CompoundFile& file() const { return *file_; }
  const ClassId& classId() const override { return classId_; }

  // Finds the child of that name, of that kind, and stores its entry. The entries form a tree in
  // the order of their names; it is searched as one. Only when that finds nothing, all entries are
  // gone through once to see whether they are in order at all: where a writer did not keep it,
  // every later search looks at all of them. Once all were seen, an index answers for them. Once
  // all were seen, an index answers for them.
  bool Find(const EntryName& name, EntryKind kind, DirectoryEntry* found);

  int32_t Open(IOHandle** target, uint32_t sourceType, const IOChildSource& source) override;

 private:
  enum class Order { kUnknown, kKept, kBroken };

  bool Search(const EntryName& name, DirectoryEntry* found);
  bool LookUp(const EntryName& name, DirectoryEntry* found);
  bool GoThrough(const EntryName& name, DirectoryEntry* found);

  CompoundFile* file_;
  ClassId classId_;
  uint32_t child_;
  Order order_ = Order::kUnknown;
  bool isIndexed_ = false;
  NameIndex index_;  // where that is set: of all entries, from left to right
};

}  // namespace fi::storage

#endif  // FI_TOOLKIT_STORAGE_STORAGE_H_
