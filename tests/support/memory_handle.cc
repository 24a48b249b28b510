#include "tests/support/memory_handle.h"

#include <algorithm>
#include <cstring>

#include "toolkit/zip/zip_view.h"

namespace fi::testing {

// 64-bit positions are denied through get-info, as a host does whose table has the slots anyway.
const IOHandleOperations MemoryHandle::kOperations64 = {
    Close, Read, nullptr, Seek, Tell, GetInfo, Open, Seek64, Tell64,
};

MemoryHandle::MemoryHandle(std::string bytes, std::string name)
    : IOHandle{&kOperations64}, bytes_(std::move(bytes)), name_(std::move(name)) {}

int32_t MemoryHandle::Close(IOHandle* handle) {
  ++Self(handle)->closes;
  return 0;
}

int32_t MemoryHandle::Read(IOHandle* handle, void* buffer, uint32_t size, uint32_t* count) {
  MemoryHandle* self = Self(handle);
  *count = 0;
  if (++self->reads == self->failingRead) return -1;
  const auto total = static_cast<int64_t>(self->bytes_.size());
  if (self->position >= total) return 0;
  const int64_t left = std::min<int64_t>(total - self->position, self->mostPerRead);
  *count = static_cast<uint32_t>(std::min<int64_t>(left, size));
  std::memcpy(buffer, self->bytes_.data() + self->position, *count);
  self->position += *count;
  self->bytesRead += *count;
  return 0;
}

int32_t MemoryHandle::MoveTo(uint32_t origin, int64_t offset) {
  if (++seeks == failingSeek) return -1;
  int64_t target = offset;
  if (origin == kIoFromCurrent) target += position;
  if (origin == kIoFromEnd) target += static_cast<int64_t>(bytes_.size());
  if (target < 0) return -1;
  position = target;
  return 0;
}

int32_t MemoryHandle::Seek(IOHandle* handle, uint32_t origin, int32_t offset) {
  const bool fromStart = origin == kIoFromStart;
  return Self(handle)->MoveTo(origin,
                              fromStart ? int64_t{static_cast<uint32_t>(offset)} : int64_t{offset});
}

int32_t MemoryHandle::Tell(IOHandle* handle, uint32_t* position) {
  *position = static_cast<uint32_t>(Self(handle)->position);
  return 0;
}

int32_t MemoryHandle::Seek64(IOHandle* handle, uint32_t origin, int64_t offset) {
  return Self(handle)->MoveTo(origin, offset);
}

int32_t MemoryHandle::Tell64(IOHandle* handle, int64_t* position) {
  *position = Self(handle)->position;
  return 0;
}

int32_t MemoryHandle::GetInfo(IOHandle* handle, uint32_t code, void* out) {
  const MemoryHandle* self = Self(handle);
  switch (code) {
    case kIoInfoFileName:
      if (!self->hasName) return -1;
      if (self->wideName) {
        std::copy_n(self->name_.c_str(), self->name_.size() + 1, static_cast<uint16_t*>(out));
      } else {
        std::copy_n(self->name_.c_str(), self->name_.size() + 1, static_cast<char*>(out));
      }
      return 0;
    case kIoInfoIsStorage:
      return self->classId.has_value() ? 0 : -1;
    case kIoInfoClassId:
      if (!self->classId.has_value()) return -1;
      std::copy(self->classId->begin(), self->classId->end(), static_cast<uint8_t*>(out));
      return 0;
    case kIoInfoNameWidth:
      *static_cast<uint16_t*>(out) = self->wideName ? kIoNameWide : kIoNameNarrow;
      return 0;
    case kIoInfoHas64Bit:
      return self->has64Bit ? 0 : -1;
    default:
      return -1;
  }
}

int32_t MemoryHandle::Open(IOHandle* handle, IOHandle** target, uint32_t sourceType,
                           const void* /*source*/, uint32_t /*flags*/) {
  if (sourceType == kIoSourcePackage) return zip::OpenView(handle, 0, target);
  if (sourceType == kIoSourceRepairedPackage) return zip::OpenRepairedView(handle, 0, target);
  *target = nullptr;
  return kIoNotFound;
}

}  // namespace fi::testing
