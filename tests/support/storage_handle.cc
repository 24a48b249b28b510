#include "tests/support/storage_handle.h"

#include <strings.h>

#include <utility>

namespace fi::testing {

StorageHandle::StorageHandle(std::vector<StorageNode> children, std::string name)
    : MemoryHandle("", std::move(name)),
      base_(operations),
      table_(*operations),
      node_{"", true, "", std::move(children)} {
  table_.close = Close;
  table_.read = Read;
  table_.getInfo = GetInfo;
  table_.open = Open;
  operations = &table_;
}

StorageHandle::StorageHandle(StorageNode node, StorageHandle* parent)
    : MemoryHandle(node.bytes),
      base_(operations),
      table_(parent->table_),
      node_(std::move(node)),
      root_(parent->root_),
      parent_(parent) {
  operations = &table_;
  mostPerRead = root_->mostPerRead;
  has64Bit = root_->has64Bit;
}

int32_t StorageHandle::Close(IOHandle* handle) {
  StorageHandle* self = Self(handle);
  ++self->root_->closes;
  if (self->openChildren_ != 0) ++self->root_->closedEarly;
  if (self->parent_ == nullptr) return 0;
  --self->parent_->openChildren_;
  delete self;
  return 0;
}

int32_t StorageHandle::Read(IOHandle* handle, void* buffer, uint32_t size, uint32_t* count) {
  StorageHandle* self = Self(handle);
  *count = 0;
  if (self->node_.isStorage || ++self->root_->reads == self->root_->failingRead) return -1;
  const int32_t result = self->base_->read(handle, buffer, size, count);
  self->root_->bytesRead += *count;
  return result;
}

int32_t StorageHandle::GetInfo(IOHandle* handle, uint32_t code, void* out) {
  const StorageHandle* self = Self(handle);
  if (code == kIoInfoIsStorage) return self->isStorage && self->node_.isStorage ? 0 : -1;
  if (code == kIoInfoMemberName) {
    auto* member = static_cast<IOMemberName*>(out);
    if (member->index >= self->node_.children.size()) return -1;
    member->name = self->node_.children[member->index].name.c_str();
    return 0;
  }
  if (code != kIoInfoViewDepth) return self->base_->getInfo(handle, code, out);
  if (self->viewDepth == 0) return -1;
  *static_cast<uint32_t*>(out) = self->viewDepth;
  return 0;
}

const StorageNode* StorageHandle::Find(uint32_t sourceType, const void* source) {
  if (sourceType == kIoSourcePackage) return &node_;
  if (sourceType == kIoSourcePackageMember) {
    const auto* member = static_cast<const IOMemberSource*>(source);
    if (member->parent != this) return nullptr;
    for (const StorageNode& node : node_.children) {
      if (strcasecmp(node.name.c_str(), member->path) != 0) continue;
      root_->openedMembers += " " + node.name;
      return &node;
    }
    return nullptr;
  }
  const auto* child = static_cast<const IOChildSource*>(source);
  if (child->parent != this) return nullptr;
  for (const StorageNode& node : node_.children) {
    const uint32_t type = node.isStorage ? kIoSourceSubStorage : kIoSourceStorageStream;
    if (type == sourceType && node.name == child->name) return &node;
  }
  return nullptr;
}

int32_t StorageHandle::Open(IOHandle* handle, IOHandle** target, uint32_t sourceType,
                            const void* source, uint32_t flags) {
  StorageHandle* self = Self(handle);
  *target = nullptr;
  if (++self->root_->openCalls == self->root_->failingOpen) return kIoError;
  const StorageNode* node = self->Find(sourceType, source);
  if (node == nullptr) return kIoNotFound;
  *target = new StorageHandle(*node, self);
  ++self->openChildren_;
  self->root_->openedFlags.push_back(flags);
  return 0;
}

}  // namespace fi::testing
