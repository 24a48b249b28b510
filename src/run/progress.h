// How far a long run is, on standard error.
#ifndef FI_RUN_PROGRESS_H_
#define FI_RUN_PROGRESS_H_

#include <chrono>
#include <cstdint>

namespace fi::app {

enum class ProgressUse {
  kNone,
  kLongRuns,  // from the first second on, where standard error is a terminal
  kAlways,
};

// On a terminal one line that is rewritten and erased at the end; elsewhere lines, the last of
// which holds the total.
class Progress {
 public:
  explicit Progress(ProgressUse use);

  // Counts one file and shows the count when it is time.
  void Count();

  // Erases the line on a terminal, so that a record can be shown there.
  void Hide();

  void Finish();

 private:
  using Clock = std::chrono::steady_clock;

  void Show();

  bool isOn_;
  bool isTerminal_ = false;
  bool isShown_ = false;
  uint64_t files_ = 0;
  Clock::time_point next_;
};

}  // namespace fi::app

#endif  // FI_RUN_PROGRESS_H_
