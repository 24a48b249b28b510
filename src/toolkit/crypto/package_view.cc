#include "toolkit/crypto/package_view.h"

#include <cstring>

namespace fi::crypto {

PackageView::PackageView(std::string_view name, uint32_t depth, Work* work)
    : PositionedHandle(name, {0, work}), depth_(depth) {}

int64_t PackageView::Size() { return static_cast<int64_t>(plaintext_.size()); }

int32_t PackageView::ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) {
  return plaintext_.ReadAt(static_cast<uint64_t>(offset), buffer, size, count) ? 0 : -1;
}

int32_t PackageView::OtherInfo(uint32_t code, void* out) {
  if (code != kIoInfoViewDepth) return -1;
  std::memcpy(out, &depth_, sizeof(depth_));
  return 0;
}

}  // namespace fi::crypto
