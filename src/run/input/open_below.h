// Opening what lies below a directory without being led elsewhere.
#ifndef FI_RUN_INPUT_OPEN_BELOW_H_
#define FI_RUN_INPUT_OPEN_BELOW_H_

#include <unistd.h>

#include <memory>

namespace fi::app {

// An open directory, closed with the object.
class DirectoryDescriptor {
 public:
  explicit DirectoryDescriptor(int descriptor) : descriptor_(descriptor) {}
  DirectoryDescriptor(const DirectoryDescriptor&) = delete;
  DirectoryDescriptor& operator=(const DirectoryDescriptor&) = delete;
  ~DirectoryDescriptor() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }

  int get() const { return descriptor_; }

 private:
  int descriptor_;
};

using SharedDirectory = std::shared_ptr<const DirectoryDescriptor>;

// Opens `path`, relative to `directory` and without "..", for reading. No symbolic link on the way
// is followed, also when it took the place of a directory or file a moment ago. Never waits.
// `flags` are added to those of open. Returns the descriptor, or -1 with errno set: ELOOP or
// ENOTDIR where a link stands.
int OpenBelow(int directory, const char* path, int flags);

// OpenBelow for systems without openat2: one call for each component.
int OpenBelowByComponents(int directory, const char* path, int flags);

}  // namespace fi::app

#endif  // FI_RUN_INPUT_OPEN_BELOW_H_
