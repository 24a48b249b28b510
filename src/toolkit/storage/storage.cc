#include "toolkit/storage/storage.h"

#include <array>
#include <new>

#include "toolkit/storage/compound_file.h"
#include "toolkit/storage/storage_handle.h"
#include "toolkit/storage/stream_handle.h"

namespace fi::storage {

Storage::Storage(CompoundFile& file, const DirectoryEntry& entry)
    : file_(&file), classId_(entry.classId), child_(entry.child) {}

bool Storage::Find(const EntryName& name, EntryKind kind, DirectoryEntry* found) {
  DirectoryEntry entry;
  file_->AllowLoads(kMaxSearchLoads);
  // In a tree that is in order, the search finds what the index has.
  const bool isSearched = !isIndexed_ || order_ != Order::kKept;
  if (!isSearched || !Search(name, &entry)) {
    if (isIndexed_ ? !LookUp(name, &entry) : order_ == Order::kKept || !GoThrough(name, &entry)) {
      return false;
    }
  }
  if (entry.kind != kind) return false;
  *found = entry;
  return true;
}

bool Storage::Search(const EntryName& name, DirectoryEntry* found) {
  uint32_t id = child_;
  for (uint32_t looked = 0; looked < kMaxSiblings; ++looked) {
    if (!file_->ReadEntry(id, found)) return false;
    const int order = CompareNames(name, found->name);
    if (order == 0) return true;
    id = order < 0 ? found->left : found->right;
  }
  return false;
}

// The first from left to right, as GoThrough finds it.
bool Storage::LookUp(const EntryName& name, DirectoryEntry* found) {
  const uint32_t key = KeyOf(name);
  for (size_t at = 0; (at = index_.Find(key, at)) < index_.size(); ++at) {
    if (file_->ReadEntry(index_.IdAt(at), found) && CompareNames(name, found->name) == 0)
      return true;
  }
  return false;
}

// Looks at the entries from left to right. Each entry goes on the path at most once before its
// turn, so a tree with a loop ends at the limit too. Only a tree seen whole gets an index.
bool Storage::GoThrough(const EntryName& name, DirectoryEntry* found) {
  std::array<uint32_t, kMaxSiblings> path;
  uint32_t depth = 0;
  uint32_t met = 0;
  EntryName previous;
  Order order = Order::kKept;
  bool isWhole = true;
  index_.Clear();
  const uint32_t key = KeyOf(name);
  uint32_t id = child_;
  for (;;) {
    while (const uint8_t* entry = met < kMaxSiblings ? file_->EntryBytes(id) : nullptr) {
      path[depth++] = id;
      ++met;
      id = LeftOf(entry);
    }
    if (depth == 0) break;
    id = path[--depth];
    if (!file_->ReadEntry(id, found)) {
      isWhole = false;
      break;
    }
    const uint32_t itsKey = KeyOf(found->name);
    if (itsKey == key && CompareNames(name, found->name) == 0) return true;
    if (CompareNames(previous, found->name) >= 0) order = Order::kBroken;
    isWhole = isWhole && index_.Add(itsKey, id);
    previous = found->name;
    id = found->right;
  }
  if (order_ == Order::kUnknown) order_ = order;
  isIndexed_ = isWhole && order == order_ && met < kMaxSiblings && file_->MayLoad();
  return false;
}

int32_t Storage::Open(IOHandle** target, uint32_t sourceType, const IOChildSource& source) {
  if (source.name == nullptr) return kIoError;
  const bool isStream = sourceType == kIoSourceStorageStream;
  EntryName name;
  DirectoryEntry entry;
  if (!EntryName::Widen(source.name, &name) ||
      !Find(name, isStream ? EntryKind::kStream : EntryKind::kStorage, &entry)) {
    return kIoNotFound;
  }
  if (isStream) {
    *target = Allocated(file_->work(), new (std::nothrow) StreamHandle(*file_, entry));
  } else {
    *target = Allocated(file_->work(), new (std::nothrow) StorageHandle(*file_, entry));
  }
  return *target == nullptr ? kIoError : kIoOk;
}

}  // namespace fi::storage
