#include "toolkit/io/parts_handle.h"

#include <algorithm>
#include <cstring>

namespace fi::io {
namespace {

// Bytes that are asked for at least: a request over a network costs as much as these.
constexpr uint64_t kLeastWanted = 16 * 1024;

}  // namespace

uint64_t WantedSize(uint64_t offset, uint64_t size, uint64_t fileSize) {
  const uint64_t wanted = std::max(size, kLeastWanted);
  return offset < fileSize ? std::min(wanted, fileSize - offset) : wanted;
}

PartsHandle::PartsHandle(std::span<const FIPart> parts, uint64_t size, std::string_view name,
                         Work* work)
    : PositionedHandle(name, {0, work, true}), parts_(parts), size_(size) {}

int64_t PartsHandle::Size() {
  if (size_ != FI_UNKNOWN_SIZE) return static_cast<int64_t>(size_);
  work()->NoteSizeMissing();
  uint64_t known = 0;
  for (const FIPart& part : parts_) known = std::max(known, part.offset + part.size);
  return static_cast<int64_t>(known);
}

int32_t PartsHandle::ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) {
  const auto from = static_cast<uint64_t>(offset);
  if (size == 0 || from >= size_) return 0;
  const FIPart* best = nullptr;
  for (const FIPart& part : parts_) {
    if (from < part.offset || from - part.offset >= part.size) continue;
    if (best == nullptr || part.offset + part.size > best->offset + best->size) best = &part;
  }
  if (best == nullptr) {
    work()->NoteMissing(from, WantedSize(from, size, size_));
    return -1;
  }
  const uint64_t begin = from - best->offset;
  const uint64_t left = std::min(best->size - begin, size_ - from);
  *count = static_cast<uint32_t>(std::min<uint64_t>(size, left));
  std::memcpy(buffer, static_cast<const uint8_t*>(best->data) + begin, *count);
  return 0;
}

}  // namespace fi::io
