// Standard output in whole records.
#ifndef FI_RUN_OUTPUT_H_
#define FI_RUN_OUTPUT_H_

#include <cstddef>
#include <string>
#include <string_view>

namespace fi::app {

// Collects records and writes them whole. What is left in the buffer is written by Flush, not by
// the destructor, since it may fail.
class Output {
 public:
  explicit Output(int descriptor);

  // Writes each record at once from now on.
  void FlushEachRecord() { limit_ = 0; }

  bool IsTerminal() const { return isTerminal_; }

  // False when nothing can be written any more: the reader went away or a write failed.
  bool Write(std::string_view record);
  bool Flush();

  // errno of the write that failed; 0 when none did, or when only the reader went away.
  int error() const { return error_; }

 private:
  bool WriteNow(std::string_view bytes);

  int descriptor_;
  size_t limit_;  // bytes that the buffer holds before it is written
  bool isTerminal_ = false;
  bool isOpen_ = true;
  int error_ = 0;
  std::string buffer_;
};

}  // namespace fi::app

#endif  // FI_RUN_OUTPUT_H_
