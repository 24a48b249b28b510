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
  if (!Search(name, &entry)) {
    if (order_ == Order::kKept || !GoThrough(name, &entry)) return false;
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

// Looks at the entries from left to right. Each is put on the path at most once before it is looked
// at, so that a tree which runs into itself ends at the limit too.
bool Storage::GoThrough(const EntryName& name, DirectoryEntry* found) {
  std::array<uint32_t, kMaxSiblings> path;
  uint32_t depth = 0;
  uint32_t met = 0;
  EntryName previous;
  Order order = Order::kKept;
  uint32_t id = child_;
  for (;;) {
    while (met < kMaxSiblings && file_->ReadEntry(id, found)) {
      path[depth++] = id;
      ++met;
      id = found->left;
    }
    if (depth == 0) break;
    if (!file_->ReadEntry(path[--depth], found)) break;
    if (CompareNames(name, found->name) == 0) return true;
    if (CompareNames(previous, found->name) >= 0) order = Order::kBroken;
    previous = found->name;
    id = found->right;
  }
  if (order_ == Order::kUnknown) order_ = order;
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
    *target = Allocated(file_->work(),
                        new (std::nothrow) StorageHandle(Storage(*file_, entry), entry.name));
  }
  return *target == nullptr ? kIoError : kIoOk;
}

}  // namespace fi::storage
