#include "toolkit/io/file_handle.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace fi::io {

FileHandle::FileHandle(int descriptor, DescriptorUse use, int64_t size, std::string_view name,
                       Work* work)
    : PositionedHandle(name, {0, work, true}), descriptor_(descriptor), use_(use), size_(size) {}

FileHandle::~FileHandle() {
  if (use_ == DescriptorUse::kOwned) ::close(descriptor_);
}

int64_t FileHandle::Size() { return size_; }

int32_t FileHandle::OtherInfo(uint32_t code, void* out) {
  if (code != kIoInfoReadError) return -1;
  std::memcpy(out, &readError_, sizeof(readError_));
  return 0;
}

uint32_t FileHandle::Block::Copy(int64_t from, uint8_t* buffer, uint32_t size) const {
  if (from < offset || from - offset >= filled) return 0;
  const auto start = static_cast<uint32_t>(from - offset);
  const uint32_t count = std::min(size, filled - start);
  std::memcpy(buffer, bytes.data() + start, count);
  return count;
}

// Stores fewer bytes than asked for only where the file ends. A file shortened after the opening
// ends at its new size.
bool FileHandle::Pread(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) {
  *count = 0;
  while (*count < size) {
    const ssize_t got = ::pread(descriptor_, buffer + *count, size - *count, offset + *count);
    if (got == 0) break;
    if (got < 0) {
      if (errno == EINTR) continue;
      if (readError_ == 0) readError_ = errno;
      if (work() != nullptr) work()->NoteReadError(errno);
      return *count > 0;
    }
    *count += static_cast<uint32_t>(got);
    // A short answer inside the known size is asked for again; at the end that would only cost a
    // call to hear the same.
    if (offset + *count >= size_) break;
  }
  return true;
}

bool FileHandle::LoadHead() {
  if (headLoaded_) return true;
  if (!Pread(0, head_.bytes.data(), kBlockSize, &head_.filled)) return false;
  headLoaded_ = true;
  size_ = std::max(size_, int64_t{head_.filled});
  return true;
}

bool FileHandle::LoadWindow(int64_t offset) {
  window_.offset = std::max(std::min(offset, size_ - kBlockSize), int64_t{kBlockSize});
  return Pread(window_.offset, window_.bytes.data(), kBlockSize, &window_.filled);
}

int32_t FileHandle::ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) {
  if (offset < kBlockSize) {
    if (!LoadHead()) return -1;
    *count = head_.Copy(offset, buffer, size);
    if (head_.filled < kBlockSize) return 0;
  }
  offset += *count;
  buffer += *count;
  size -= *count;
  if (size == 0 || offset >= size_) return 0;

  uint32_t more = 0;
  if (size >= kBlockSize) {
    if (!Pread(offset, buffer, size, &more)) return *count > 0 ? 0 : -1;
  } else if (*count == 0) {
    more = window_.Copy(offset, buffer, size);
    if (more == 0) {
      if (!LoadWindow(offset)) return -1;
      more = window_.Copy(offset, buffer, size);
    }
  }
  *count += more;
  return 0;
}

}  // namespace fi::io
