#include "run/output.h"

#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>

namespace fi::app {
namespace {

constexpr size_t kBufferSize = size_t{64} << 10;

// A descriptor that another process made non-blocking is waited for.
bool WaitForRoom(int descriptor) {
  pollfd wanted = {descriptor, POLLOUT, 0};
  return ::poll(&wanted, 1, -1) >= 0 || errno == EINTR;
}

}  // namespace

// A pipe takes PIPE_BUF bytes whole or not at all. With no more than that in one write, records
// stay whole for its reader also when a signal ends the command.
Output::Output(int descriptor) : descriptor_(descriptor), limit_(kBufferSize) {
  struct stat status;
  if (::fstat(descriptor, &status) != 0) return;
  if (S_ISFIFO(status.st_mode)) limit_ = PIPE_BUF;
  isTerminal_ = S_ISCHR(status.st_mode) && ::isatty(descriptor) == 1;
  if (isTerminal_) limit_ = 0;
}

bool Output::WriteNow(std::string_view bytes) {
  while (isOpen_ && !bytes.empty()) {
    const ssize_t count = ::write(descriptor_, bytes.data(), bytes.size());
    if (count >= 0) {
      bytes.remove_prefix(static_cast<size_t>(count));
      continue;
    }
    if (errno == EINTR || (errno == EAGAIN && WaitForRoom(descriptor_))) continue;
    isOpen_ = false;
    if (errno != EPIPE) error_ = errno;
  }
  return isOpen_;
}

bool Output::Flush() {
  const bool written = WriteNow(buffer_);
  buffer_.clear();
  return written;
}

bool Output::Write(std::string_view record) {
  if (buffer_.size() + record.size() > limit_ && !Flush()) return false;
  if (record.size() >= limit_) return WriteNow(record);
  buffer_ += record;
  return isOpen_;
}

}  // namespace fi::app
