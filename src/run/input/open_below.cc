#include "run/input/open_below.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/syscall.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <string>

namespace fi::app {
namespace {

constexpr int kReadFlags = O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;

// A rename anywhere in the system can make the kernel ask for another attempt.
constexpr int kMostAttempts = 8;

// Cleared by the first call that the system does not know or a filter refuses.
std::atomic<bool> hasOpenat2{true};

int OpenAt2(int directory, const char* path, int flags) {
  open_how how = {};
  how.flags = static_cast<decltype(how.flags)>(kReadFlags | flags);
  how.resolve = RESOLVE_NO_SYMLINKS;
  for (int attempt = 1;; ++attempt) {
    const long opened = ::syscall(SYS_openat2, directory, path, &how, sizeof(how));
    if (opened >= 0 || errno != EAGAIN || attempt == kMostAttempts) return static_cast<int>(opened);
  }
}

}  // namespace

int OpenBelowByComponents(int directory, const char* path, int flags) {
  int outer = -1;  // the innermost directory that was opened here
  std::string component;
  for (;;) {
    const char* slash = std::strchr(path, '/');
    if (slash == nullptr) break;
    component.assign(path, slash);
    path = slash + 1;
    if (component.empty()) continue;
    const int inner = ::openat(outer >= 0 ? outer : directory, component.c_str(),
                               O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    const int error = errno;
    if (outer >= 0) ::close(outer);
    errno = error;
    if (inner < 0) return -1;
    outer = inner;
  }
  const int opened =
      ::openat(outer >= 0 ? outer : directory, path, kReadFlags | O_NOFOLLOW | flags);
  const int error = errno;
  if (outer >= 0) ::close(outer);
  errno = error;
  return opened;
}

int OpenBelow(int directory, const char* path, int flags) {
  if (hasOpenat2.load(std::memory_order_relaxed)) {
    const int opened = OpenAt2(directory, path, flags);
    if (opened >= 0 || (errno != ENOSYS && errno != EPERM)) return opened;
    // A filter of system calls answers EPERM; so does a file, rarely, which the fallback tells.
    if (errno == ENOSYS) hasOpenat2.store(false, std::memory_order_relaxed);
  }
  return OpenBelowByComponents(directory, path, flags);
}

}  // namespace fi::app
