// The names of a directory in the order of their bytes, in bounded memory.
#ifndef FI_RUN_INPUT_SORTED_NAMES_H_
#define FI_RUN_INPUT_SORTED_NAMES_H_

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "run/input/temporary_file.h"

namespace fi::app {

// Takes names, then gives them back sorted. Names beyond the limit of memory are sorted in runs in
// a temporary file, and Next merges the runs.
class SortedNames {
 public:
  // `limit`: bytes of names and their offsets that are held while names come in.
  explicit SortedNames(size_t limit) : limit_(limit) {}

  // Each returns false with errno set when the temporary file cannot be made or written.
  // `name` ends with a NUL and is not empty.
  bool Add(char kind, const char* name);
  bool Finish();

  // The next name, which stays until the next call; nullptr at the end, and with error() set where
  // the temporary file cannot be read. REQUIRES: Finish.
  const char* Next(char& kind);

  int error() const { return error_; }

  // Bytes that are held.
  size_t Footprint() const;

 private:
  struct Run {
    off_t next;  // what is not read yet
    off_t end;
    std::string buffer;
    size_t at = 0;  // of the first entry in the buffer, which is whole
  };

  void Sort();
  bool Spill();
  const char* NextOfRuns(char& kind);
  bool Fill(Run& run);
  bool IsLater(size_t left, size_t right) const;
  void Push(size_t run);

  size_t limit_;
  std::string names_;            // one byte of kind, the name, a NUL
  std::vector<uint32_t> order_;  // offsets into names_
  size_t next_ = 0;
  TemporaryFile file_;
  off_t written_ = 0;
  std::vector<Run> runs_;
  std::vector<size_t> heap_;  // of runs that hold an entry, the least name first
  size_t current_ = 0;        // the run that gave the last name
  bool hasCurrent_ = false;
  int error_ = 0;
};

}  // namespace fi::app

#endif  // FI_RUN_INPUT_SORTED_NAMES_H_
