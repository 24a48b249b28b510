#include "run/input/temporary_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>

namespace fi::app {

TemporaryFile::~TemporaryFile() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

bool TemporaryFile::Open() {
  const char* named = std::getenv("TMPDIR");
  const std::string directory = named != nullptr && named[0] != '\0' ? named : "/tmp";
  descriptor_ = ::open(directory.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC | O_EXCL, 0600);
  if (descriptor_ >= 0) return true;
  // Not every file system makes files without a name.
  std::string path = directory + "/formatid-XXXXXX";
  descriptor_ = ::mkostemp(path.data(), O_CLOEXEC);
  if (descriptor_ < 0) return false;
  ::unlink(path.c_str());
  return true;
}

bool TemporaryFile::Append(const void* data, size_t size) {
  const char* bytes = static_cast<const char*>(data);
  while (size > 0) {
    const ssize_t count = ::write(descriptor_, bytes, size);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    bytes += count;
    size -= static_cast<size_t>(count);
  }
  return true;
}

}  // namespace fi::app
