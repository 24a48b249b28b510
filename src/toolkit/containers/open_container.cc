// Opens what a handle of the toolkit holds: the one place that knows the formats of containers.

#include "toolkit/io/containers.h"
#include "toolkit/storage/compound_file.h"
#include "toolkit/zip/zip_view.h"

namespace fi::io {

std::unique_ptr<ContainedStorage> OpenStorage(IOHandle* handle, uint32_t nesting) {
  if (nesting > storage::kMaxNesting) return nullptr;
  return storage::CompoundFile::Open(handle, nesting);
}

int32_t OpenPackageView(IOHandle* handle, uint32_t nesting, uint32_t sourceType,
                        IOHandle** target) {
  return sourceType == kIoSourcePackage ? zip::OpenView(handle, nesting, target)
                                        : zip::OpenRepairedView(handle, nesting, target);
}

}  // namespace fi::io
