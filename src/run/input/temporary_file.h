// A file without a name, which goes with the process.
#ifndef FI_RUN_INPUT_TEMPORARY_FILE_H_
#define FI_RUN_INPUT_TEMPORARY_FILE_H_

#include <cstddef>
#include <utility>

namespace fi::app {

class TemporaryFile {
 public:
  TemporaryFile() = default;
  TemporaryFile(TemporaryFile&& other) noexcept
      : descriptor_(std::exchange(other.descriptor_, -1)) {}
  TemporaryFile& operator=(TemporaryFile&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
  }
  ~TemporaryFile();

  // In the directory that the variable TMPDIR names, else in /tmp. False with errno set.
  bool Open();

  bool IsOpen() const { return descriptor_ >= 0; }
  int descriptor() const { return descriptor_; }

  // Writes all of it at the end. False with errno set.
  bool Append(const void* data, size_t size);

 private:
  int descriptor_ = -1;
};

}  // namespace fi::app

#endif  // FI_RUN_INPUT_TEMPORARY_FILE_H_
