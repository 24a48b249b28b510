#include "run/standard_input.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace fi::app {
namespace {

constexpr size_t kFirstRoom = size_t{64} << 10;  // the capacity of a pipe

bool IsFileAtStart(int descriptor) {
  struct stat status;
  return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
         ::lseek(descriptor, 0, SEEK_CUR) == 0;
}

ssize_t ReadSome(int descriptor, uint8_t* buffer, size_t size) {
  for (;;) {
    const ssize_t count = ::read(descriptor, buffer, size);
    if (count >= 0 || errno != EINTR) return count;
  }
}

bool WriteAll(int descriptor, const uint8_t* data, size_t size) {
  while (size > 0) {
    const ssize_t count = ::write(descriptor, data, size);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    data += count;
    size -= static_cast<size_t>(count);
  }
  return true;
}

}  // namespace

bool StandardInput::StartFile() {
  file_.reset(std::tmpfile());
  return file_ != nullptr && WriteAll(::fileno(file_.get()), memory_.data(), memory_.size());
}

// Fills the memory, which grows by doubling. When it is full at its limit it is written out and
// serves as the buffer of what follows.
bool StandardInput::Spool(int descriptor) {
  size_t filled = 0;
  for (;;) {
    if (file_ == nullptr && filled == memory_.size()) {
      if (filled == kMemoryLimit) {
        if (!StartFile()) return false;
      } else {
        memory_.resize(std::clamp(filled * 2, kFirstRoom, kMemoryLimit));
      }
    }
    const size_t start = file_ == nullptr ? filled : 0;
    const ssize_t count = ReadSome(descriptor, memory_.data() + start, memory_.size() - start);
    if (count < 0) return false;
    if (count == 0) break;
    const auto got = static_cast<size_t>(count);
    filled = start + got;
    if (file_ != nullptr && !WriteAll(::fileno(file_.get()), memory_.data(), got)) return false;
  }
  if (file_ == nullptr) memory_.resize(filled);
  return true;
}

bool StandardInput::Open(int descriptor, const char* name, IOHandle** handle) {
  if (!IsFileAtStart(descriptor)) {
    if (!Spool(descriptor)) return false;
    if (file_ == nullptr) {
      const IOMemorySource source = {memory_.data(), memory_.size(), name};
      return IOOpen(handle, kIoSourceMemory, &source, 1) == kIoOk;
    }
    descriptor = ::fileno(file_.get());
  }
  const IODescriptorSource source = {descriptor, name};
  return IOOpen(handle, kIoSourceDescriptor, &source, 1) == kIoOk;
}

}  // namespace fi::app
