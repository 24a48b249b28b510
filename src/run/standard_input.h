// Standard input as something that can be read at any position.
#ifndef FI_RUN_STANDARD_INPUT_H_
#define FI_RUN_STANDARD_INPUT_H_

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <vector>

#include "formatid/io.h"

namespace fi::app {

// Holds the data behind the handle: keep it until the handle is closed.
class StandardInput {
 public:
  // What a pipe delivers stays in memory up to this many bytes and goes to a temporary file beyond.
  static constexpr size_t kMemoryLimit = size_t{16} << 20;

  // A regular file that stands at its start is read where it lies; anything else is read to its end
  // first. `name` may be nullptr. False, with errno set, when it cannot be read.
  bool Open(int descriptor, const char* name, IOHandle** handle);

 private:
  struct FileCloser {
    void operator()(std::FILE* file) const { (void)std::fclose(file); }
  };

  bool Spool(int descriptor);
  bool StartFile();

  std::vector<uint8_t> memory_;
  std::unique_ptr<std::FILE, FileCloser> file_;  // unlinked; its stream buffer is not used
};

}  // namespace fi::app

#endif  // FI_RUN_STANDARD_INPUT_H_
