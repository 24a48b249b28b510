// How much there is to do: a walk of its own that only counts.
#ifndef FI_RUN_INPUT_COUNT_AHEAD_H_
#define FI_RUN_INPUT_COUNT_AHEAD_H_

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "run/input/file_walk.h"

namespace fi::app {

struct Amount {
  uint64_t files = 0;
  uint64_t bytes = 0;
};

class CountAhead {
 public:
  struct Inputs {
    const std::vector<std::string>* paths = nullptr;
    const WalkOptions* walk = nullptr;
    bool isRecursive = false;
    const char* list = nullptr;  // a file of further paths; nullptr: none
    char terminator = '\n';
  };

  // Begins to count in a thread; what `inputs` points to is borrowed. Where no thread can be had,
  // nothing is ever known.
  explicit CountAhead(const Inputs& inputs);
  CountAhead(const CountAhead&) = delete;
  CountAhead& operator=(const CountAhead&) = delete;
  ~CountAhead();

  // True when all is counted: `total` is then set.
  bool IsKnown(Amount& total) const;

 private:
  void Count();
  void CountPath(const std::string& path);
  void CountDirectory(const std::string& path);
  void CountList();
  void Add(int64_t size);

  Inputs inputs_;
  std::atomic<uint64_t> files_{0};
  std::atomic<uint64_t> bytes_{0};
  std::atomic<bool> isDone_{false};
  std::atomic<bool> isEnding_{false};
  std::thread thread_;
};

}  // namespace fi::app

#endif  // FI_RUN_INPUT_COUNT_AHEAD_H_
