#include "tests/support/storage_handle.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace fi::testing {

const IOHandleOperations StorageHandle::kOperations = {
    Close, Read, nullptr, Seek, Tell, GetInfo, Open, Seek64, Tell64,
};

StorageHandle::StorageHandle(std::vector<StorageNode> children, std::string fileName)
    : IOHandle{&kOperations},
      node_(Storage("", std::move(children))),
      fileName_(std::move(fileName)),
      shared_(&state) {}

StorageHandle::StorageHandle(StorageNode node, StorageHandle* parent)
    : IOHandle{&kOperations}, node_(std::move(node)), shared_(parent->shared_), parent_(parent) {}

int32_t StorageHandle::Close(IOHandle* handle) {
  StorageHandle* self = Self(handle);
  ++self->shared_->closes;
  if (self->openChildren_ != 0) ++self->shared_->closedEarly;
  if (self->parent_ == nullptr) return 0;
  --self->parent_->openChildren_;
  delete self;
  return 0;
}

int32_t StorageHandle::Read(IOHandle* handle, void* buffer, uint32_t size, uint32_t* count) {
  StorageHandle* self = Self(handle);
  *count = 0;
  if (++self->shared_->reads == self->shared_->failingRead) return -1;
  const auto total = static_cast<int64_t>(self->node_.bytes.size());
  if (self->position_ >= total) return 0;
  const int64_t left = std::min<int64_t>(total - self->position_, self->shared_->mostPerRead);
  *count = static_cast<uint32_t>(std::min<int64_t>(left, size));
  std::memcpy(buffer, self->node_.bytes.data() + self->position_, *count);
  self->position_ += *count;
  self->shared_->bytesRead += *count;
  return 0;
}

int32_t StorageHandle::MoveTo(uint32_t origin, int64_t offset) {
  int64_t target = offset;
  if (origin == kIoFromCurrent) target += position_;
  if (origin == kIoFromEnd) target += static_cast<int64_t>(node_.bytes.size());
  if (target < 0) return -1;
  position_ = target;
  return 0;
}

int32_t StorageHandle::Seek(IOHandle* handle, uint32_t origin, int32_t offset) {
  const bool fromStart = origin == kIoFromStart;
  return Self(handle)->MoveTo(origin, fromStart ? static_cast<uint32_t>(offset) : int64_t{offset});
}

int32_t StorageHandle::Tell(IOHandle* handle, uint32_t* position) {
  *position = static_cast<uint32_t>(Self(handle)->position_);
  return 0;
}

int32_t StorageHandle::Seek64(IOHandle* handle, uint32_t origin, int64_t offset) {
  return Self(handle)->MoveTo(origin, offset);
}

int32_t StorageHandle::Tell64(IOHandle* handle, int64_t* position) {
  *position = Self(handle)->position_;
  return 0;
}

int32_t StorageHandle::GetInfo(IOHandle* handle, uint32_t code, void* out) {
  const StorageHandle* self = Self(handle);
  const bool isStorage = self->isStorage && self->node_.type == kIoSourceSubStorage;
  switch (code) {
    case kIoInfoFileName:
      if (self->fileName_.empty() || self->fileName_.size() >= kIoNameCapacity) return -1;
      std::memcpy(out, self->fileName_.c_str(), self->fileName_.size() + 1);
      return 0;
    case kIoInfoIsStorage:
      return isStorage ? 0 : -1;
    case kIoInfoClassId:
      if (!isStorage) return -1;
      std::copy(self->node_.classId.begin(), self->node_.classId.end(), static_cast<uint8_t*>(out));
      return 0;
    case kIoInfoHas64Bit:
      return 0;
    default:
      return -1;
  }
}

int32_t StorageHandle::Open(IOHandle* handle, IOHandle** target, uint32_t sourceType,
                            const void* source, uint32_t flags) {
  StorageHandle* self = Self(handle);
  StorageState& shared = *self->shared_;
  *target = nullptr;
  const auto* child = static_cast<const IOChildSource*>(source);
  if (++shared.openCalls == shared.failingOpen || child->parent != handle) return kIoError;
  for (const StorageNode& node : self->node_.children) {
    if (node.type != sourceType || node.name != child->name) continue;
    *target = new StorageHandle(node, self);
    ++self->openChildren_;
    ++shared.opens;
    shared.opened.push_back(node.name);
    shared.openedFlags.push_back(flags);
    return 0;
  }
  return kIoNotFound;
}

}  // namespace fi::testing
