// What a handle of the toolkit is asked to open its bytes as. The formats stand in rooms of their
// own, which build on this one: toolkit/containers puts the two together.
#ifndef FI_TOOLKIT_IO_CONTAINERS_H_
#define FI_TOOLKIT_IO_CONTAINERS_H_

#include <cstdint>
#include <memory>

#include "formatid/io.h"
#include "platform/class_id.h"

namespace fi::io {

// A storage of a compound file, as the handles on it see it.
class StorageView {
 public:
  virtual ~StorageView() = default;

  virtual const ClassId& classId() const = 0;

  // The open operation of a handle on this storage (formatid/io.h).
  // REQUIRES: sourceType is kIoSourceStorageStream or kIoSourceSubStorage.
  virtual int32_t Open(IOHandle** target, uint32_t sourceType, const IOChildSource& source) = 0;
};

// A compound file that was opened over a handle.
class ContainedStorage {
 public:
  virtual ~ContainedStorage() = default;
  virtual StorageView& Root() = 0;
};

// The compound file in the bytes of `handle`, which is borrowed for the life of the result. Null
// when there is none, when `nesting` containers around it are too many, or when memory runs out.
std::unique_ptr<ContainedStorage> OpenStorage(IOHandle* handle, uint32_t nesting);

// Opens the bytes of `handle` as a package view. `sourceType` is kIoSourcePackage or
// kIoSourceRepairedPackage. Null stays in `*target` on failure.
int32_t OpenPackageView(IOHandle* handle, uint32_t nesting, uint32_t sourceType, IOHandle** target);

}  // namespace fi::io

#endif  // FI_TOOLKIT_IO_CONTAINERS_H_
