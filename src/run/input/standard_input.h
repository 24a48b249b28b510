// Standard input as something that can be read at any position.
#ifndef FI_RUN_INPUT_STANDARD_INPUT_H_
#define FI_RUN_INPUT_STANDARD_INPUT_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "run/input/temporary_file.h"

namespace fi::app {

// Holds the data: keep it as long as they are used.
class StandardInput {
 public:
  // What a pipe delivers stays in memory up to this many bytes and goes to a temporary file beyond.
  static constexpr size_t kMemoryLimit = size_t{16} << 20;

  // `limit`: bytes that are taken in at most.
  explicit StandardInput(uint64_t limit) : limit_(limit) {}

  // A regular file that stands at its start is read where it lies; anything else is read to its end
  // first. False, with errno set, when it cannot be read.
  bool Open(int descriptor);

  // Open failed because there is more than the limit.
  bool IsOverLimit() const { return isOverLimit_; }

  // Where the data are, once open: a descriptor, or, where that is -1, the memory.
  int descriptor() const { return descriptor_; }
  std::span<const uint8_t> memory() const { return memory_; }

 private:
  bool Spool(int descriptor);
  bool StartFile();

  uint64_t limit_;
  bool isOverLimit_ = false;
  int descriptor_ = -1;
  std::vector<uint8_t> memory_;
  TemporaryFile file_;
};

}  // namespace fi::app

#endif  // FI_RUN_INPUT_STANDARD_INPUT_H_
