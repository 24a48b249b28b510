#include "run/input/standard_input.h"

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

}  // namespace

bool StandardInput::StartFile() {
  return file_.Open() && file_.Append(memory_.data(), memory_.size());
}

// Fills the memory, which grows by doubling. Memory full at its limit is written to the file, and
// is then the buffer for the rest.
bool StandardInput::Spool(int descriptor) {
  size_t filled = 0;
  for (uint64_t total = 0;;) {
    if (!file_.IsOpen() && filled == memory_.size()) {
      if (filled == kMemoryLimit) {
        if (!StartFile()) return false;
      } else {
        memory_.resize(std::clamp(filled * 2, kFirstRoom, kMemoryLimit));
      }
    }
    const size_t start = file_.IsOpen() ? 0 : filled;
    const ssize_t count = ReadSome(descriptor, memory_.data() + start, memory_.size() - start);
    if (count < 0) return false;
    if (count == 0) break;
    const auto got = static_cast<size_t>(count);
    filled = start + got;
    total += got;
    isOverLimit_ = total > limit_;
    if (isOverLimit_) return false;
    if (file_.IsOpen() && !file_.Append(memory_.data(), got)) return false;
  }
  if (!file_.IsOpen()) memory_.resize(filled);
  return true;
}

bool StandardInput::Open(int descriptor) {
  if (IsFileAtStart(descriptor)) {
    descriptor_ = descriptor;
    return true;
  }
  if (!Spool(descriptor)) return false;
  if (!file_.IsOpen()) return true;
  memory_ = {};
  descriptor_ = file_.descriptor();
  return true;
}

}  // namespace fi::app
