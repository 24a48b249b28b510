#include "toolkit/storage/storage_handle.h"

#include "toolkit/storage/compound_file.h"

namespace fi::storage {

StorageHandle::StorageHandle(CompoundFile& file, const DirectoryEntry& entry)
    : PositionedHandle(entry.name.Narrow().data(), {0, file.work()}), storage_(file, entry) {}

int32_t StorageHandle::ReadAt(int64_t /*offset*/, uint8_t* /*buffer*/, uint32_t /*size*/,
                              uint32_t* /*count*/) {
  return 0;
}

int32_t StorageHandle::OtherInfo(uint32_t code, void* out) {
  return storage_.file().OtherInfo(code, out);
}

}  // namespace fi::storage
