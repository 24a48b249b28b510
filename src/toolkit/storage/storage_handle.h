// A handle on a sub-storage: it has a class identifier and children, and no bytes.
#ifndef FI_TOOLKIT_STORAGE_STORAGE_HANDLE_H_
#define FI_TOOLKIT_STORAGE_STORAGE_HANDLE_H_

#include <cstdint>

#include "toolkit/io/positioned_handle.h"
#include "toolkit/storage/storage.h"

namespace fi::storage {

class StorageHandle final : public io::PositionedHandle {
 public:
  // The handle on the whole file outlives this one.
  StorageHandle(CompoundFile& file, const DirectoryEntry& entry);

 protected:
  int64_t Size() override { return 0; }
  int32_t ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) override;
  int32_t OtherInfo(uint32_t code, void* out) override;
  io::StorageView* AsStorage() override { return &storage_; }

 private:
  ~StorageHandle() override = default;

  Storage storage_;
};

}  // namespace fi::storage

#endif  // FI_TOOLKIT_STORAGE_STORAGE_HANDLE_H_
