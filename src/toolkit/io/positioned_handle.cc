#include "toolkit/io/positioned_handle.h"

#include <algorithm>
#include <cstring>

#include "platform/io.h"
#include "platform/trace.h"

namespace fi::io {
namespace {

constexpr uint32_t kNarrow = kIoNameNarrow;

}  // namespace

const IOHandleOperations PositionedHandle::kOperations = {
    Close, Read, nullptr, Seek, Tell, GetInfo, Open, Seek64, Tell64,
};

PositionedHandle::PositionedHandle(std::string_view name, const HandleOrigin& origin)
    : IOHandle{&kOperations}, origin_(origin) {
  TakeName(name);
}

void PositionedHandle::TakeName(std::string_view name) {
  name_ = {};
  name = name.substr(name.rfind('/') + 1);
  const size_t kept = std::min(name.size(), name_.size() - 1);
  name.copy(name_.data(), kept, name.size() - kept);
}

PositionedHandle::~PositionedHandle() = default;

int32_t PositionedHandle::OtherInfo(uint32_t /*code*/, void* /*out*/) { return -1; }

int32_t PositionedHandle::OpenMember(IOHandle** /*target*/, const IOMemberSource& /*source*/) {
  return kIoError;
}

int32_t PositionedHandle::ForgetNames(IOHandle* handle) {
  if (Of(handle) == nullptr) return kIoError;
  static_cast<PositionedHandle*>(handle)->ForgetNames();
  return kIoOk;
}

StorageView* PositionedHandle::AsStorage() {
  if (!askedForStorage_) {
    askedForStorage_ = true;
    storage_ = OpenStorage(this, nesting());
  }
  return storage_ == nullptr ? nullptr : &storage_->Root();
}

int32_t PositionedHandle::Close(IOHandle* handle) noexcept {
  delete static_cast<PositionedHandle*>(handle);
  return 0;
}

int32_t PositionedHandle::Read(IOHandle* handle, void* buffer, uint32_t size,
                               uint32_t* count) noexcept {
  auto* self = static_cast<PositionedHandle*>(handle);
  *count = 0;
  auto* const bytes = static_cast<uint8_t*>(buffer);
  const int32_t result = self->work() == nullptr ? self->ReadAt(self->position_, bytes, size, count)
                                                 : self->ReadCounted(bytes, size, count);
  if (result == 0) self->position_ += *count;
  return result;
}

int32_t PositionedHandle::ReadCounted(uint8_t* buffer, uint32_t size, uint32_t* count) {
  Work& work = *origin_.work;
  if (!origin_.isSource) {
    return work.SpendStep() ? ReadAt(position_, buffer, size, count) : 0;
  }
  const uint32_t allowed = work.BeginRead(size);
  if (allowed == 0) return 0;
  const int32_t result = ReadAt(position_, buffer, allowed, count);
  work.EndRead(*count);
  fi::Tell(&work,
           {.kind = kFiTraceRead, .offset = static_cast<uint64_t>(position_), .count = *count});
  // A reader may take what is cut for the end of the data and not ask again.
  if (allowed < size && *count == allowed) work.Stop(WorkLimit::kBytesRead);
  return result;
}

int32_t PositionedHandle::Seek(IOHandle* handle, uint32_t origin, int32_t offset) noexcept {
  const int64_t distance =
      origin == kIoFromStart ? int64_t{static_cast<uint32_t>(offset)} : int64_t{offset};
  return Seek64(handle, origin, distance);
}

int32_t PositionedHandle::Tell(IOHandle* handle, uint32_t* position) noexcept {
  *position = static_cast<uint32_t>(static_cast<PositionedHandle*>(handle)->position_);
  return 0;
}

int32_t PositionedHandle::Seek64(IOHandle* handle, uint32_t origin, int64_t offset) noexcept {
  auto* self = static_cast<PositionedHandle*>(handle);
  int64_t base = 0;
  if (origin == kIoFromCurrent) base = self->position_;
  if (origin == kIoFromEnd) base = self->Size();
  int64_t target = 0;
  if (origin > kIoFromEnd || __builtin_add_overflow(base, offset, &target) || target < 0) return -1;
  self->position_ = target;
  return 0;
}

int32_t PositionedHandle::Tell64(IOHandle* handle, int64_t* position) noexcept {
  *position = static_cast<PositionedHandle*>(handle)->position_;
  return 0;
}

int32_t PositionedHandle::GetInfo(IOHandle* handle, uint32_t code, void* out) noexcept {
  auto* self = static_cast<PositionedHandle*>(handle);
  switch (code) {
    case kIoInfoFileName:
      std::memcpy(out, self->name_.data(), self->name_.size());
      return 0;
    case kIoInfoIsStorage:
      return self->AsStorage() == nullptr ? -1 : 0;
    case kIoInfoClassId: {
      const StorageView* storage = self->AsStorage();
      if (storage == nullptr) return -1;
      std::memcpy(out, storage->classId().data(), storage->classId().size());
      return 0;
    }
    case kIoInfoNameWidth:
      std::memcpy(out, &kNarrow, sizeof(kNarrow));
      return 0;
    case kIoInfoHas64Bit:
      return 0;
    default:
      return self->OtherInfo(code, out);
  }
}

int32_t PositionedHandle::Open(IOHandle* handle, IOHandle** target, uint32_t sourceType,
                               const void* source, uint32_t /*flags*/) noexcept {
  auto* self = static_cast<PositionedHandle*>(handle);
  *target = nullptr;
  if (sourceType == kIoSourceRepairedPackage) {
    return OpenPackageView(handle, self->nesting(), sourceType, target);
  }
  if (sourceType == kIoSourcePackage) {
    if (self->isNoPackage_) return kIoError;
    const int32_t result = OpenPackageView(handle, self->nesting(), sourceType, target);
    self->isNoPackage_ = result != kIoOk;
    return result;
  }
  if (source == nullptr) return kIoError;
  if (sourceType == kIoSourcePackageMember) {
    const auto& member = *static_cast<const IOMemberSource*>(source);
    const int32_t result = self->OpenMember(target, member);
    if (result == kIoOk) fi::Tell(self->work(), {.kind = kFiTraceMember, .text = member.path});
    return result;
  }
  if (sourceType != kIoSourceStorageStream && sourceType != kIoSourceSubStorage) return kIoError;
  StorageView* storage = self->AsStorage();
  if (storage == nullptr) return kIoError;
  const auto& child = *static_cast<const IOChildSource*>(source);
  const int32_t result = storage->Open(target, sourceType, child);
  if (result == kIoOk) fi::Tell(self->work(), {.kind = kFiTraceStream, .text = child.name});
  return result;
}

}  // namespace fi::io

int32_t IOSetInfo(IOHandle* handle, uint32_t item, uint32_t /*value*/,
                  const void* /*data*/) noexcept {
  if (handle == nullptr) return kIoError;
  if (item == kIoSetNamesUnneeded) return fi::io::PositionedHandle::ForgetNames(handle);
  return item == kIoSetPackageMode ? kIoOk : kIoError;
}
