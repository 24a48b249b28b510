// A list of paths that is read while it is being written.
#ifndef FI_RUN_INPUT_PATH_LIST_H_
#define FI_RUN_INPUT_PATH_LIST_H_

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <utility>

namespace fi::app {

enum class ListStep { kPath, kEnd, kFault };

// Reads paths that each end with `terminator`; the last one need not. Empty ones are passed over.
class PathList {
 public:
  // A longer path keeps this many bytes: no system opens it, so it is reported as too long.
  static constexpr size_t kLongestPath = size_t{16} << 10;

  // The descriptor is borrowed. `beforeWait` is called before the list waits for its writer, and
  // several times a second while it does; where it answers false the list ends.
  PathList(int descriptor, char terminator, std::function<bool()> beforeWait)
      : descriptor_(descriptor), terminator_(terminator), beforeWait_(std::move(beforeWait)) {}

  // Stores the next path as soon as its end arrived. A fault leaves its errno.
  ListStep Next(std::string& path);

 private:
  bool Fill();
  bool Wait();

  int descriptor_;
  char terminator_;
  std::function<bool()> beforeWait_;
  size_t start_ = 0;
  size_t end_ = 0;
  bool isFaulty_ = false;
  std::array<char, size_t{32} << 10> buffer_;
};

}  // namespace fi::app

#endif  // FI_RUN_INPUT_PATH_LIST_H_
