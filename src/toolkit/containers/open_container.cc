// Opens what a handle of the toolkit holds: the one place that knows the formats of containers.

#include <utility>

#include "platform/work.h"
#include "toolkit/io/containers.h"
#include "toolkit/storage/compound_file.h"
#include "toolkit/zip/zip_view.h"

namespace fi::io {
namespace {

// Whether the limits let `handle` be opened, with `nesting` containers around it.
bool MayEnter(const IOHandle* handle, uint32_t nesting) {
  Work* const work = WorkOf(handle);
  return work == nullptr || work->EnterDepth(nesting);
}

}  // namespace

std::unique_ptr<ContainedStorage> OpenStorage(IOHandle* handle, uint32_t nesting) {
  if (nesting > storage::kMaxNesting) return nullptr;
  auto file = storage::CompoundFile::Open(handle, nesting);
  return file != nullptr && MayEnter(handle, nesting) ? std::move(file) : nullptr;
}

int32_t OpenPackageView(IOHandle* handle, uint32_t nesting, uint32_t sourceType,
                        IOHandle** target) {
  if (!MayEnter(handle, nesting)) return kIoError;
  return sourceType == kIoSourcePackage ? zip::OpenView(handle, nesting, target)
                                        : zip::OpenRepairedView(handle, nesting, target);
}

}  // namespace fi::io
