// How far a long run is, on standard error.
#ifndef FI_RUN_PROGRESS_H_
#define FI_RUN_PROGRESS_H_

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "run/input/count_ahead.h"

namespace fi::app {

enum class ProgressUse {
  kNone,
  kLongRuns,  // from the first second on, where standard error is a terminal
  kAlways,
};

// What a line of progress tells.
struct ProgressState {
  Amount done;
  Amount total;  // where isTotalKnown
  bool isTotalKnown = false;
  double seconds = 0;  // since the start
  std::string_view path;
};

// The line, of at most `width` columns: bar, files, bytes, rate, time left and path, as far as they
// are known and there is room for them.
std::string ProgressLine(const ProgressState& state, size_t width);

// On a terminal one line that is rewritten and erased at the end; elsewhere lines, the last of
// which holds the number of files.
class Progress {
 public:
  // What `inputs` points to is borrowed; it is counted when there is a line to show.
  Progress(ProgressUse use, const CountAhead::Inputs& inputs);

  // Counts a file of `size` bytes (negative: unknown), and shows the line when the next is due.
  void Count(std::string_view path, int64_t size);

  // Shows the line when it is time, and the state when a signal asked for it.
  void Tick();

  // Erases the line on a terminal, so that a record can be shown there.
  void Hide();

  void Finish();

 private:
  using Clock = std::chrono::steady_clock;

  ProgressState State();
  void Show();
  void ShowState();

  bool isOn_;
  bool isTerminal_ = false;
  bool isShown_ = false;
  CountAhead::Inputs inputs_;
  std::unique_ptr<CountAhead> ahead_;
  Amount done_;
  std::string path_;  // of the last file; kept while the line is on only
  Clock::time_point start_;
  Clock::time_point next_;
};

}  // namespace fi::app

#endif  // FI_RUN_PROGRESS_H_
