#include "run/progress.h"

#include <unistd.h>

#include <cstdio>
#include <string_view>

namespace fi::app {
namespace {

constexpr std::chrono::milliseconds kInterval{200};
constexpr std::chrono::seconds kLongRun{1};

// Progress that cannot be written is no reason to stop.
void WriteError(std::string_view text) {
  if (::write(STDERR_FILENO, text.data(), text.size()) < 0) return;
}

}  // namespace

Progress::Progress(ProgressUse use) : isOn_(use != ProgressUse::kNone) {
  if (!isOn_) return;
  isTerminal_ = ::isatty(STDERR_FILENO) == 1;
  if (use == ProgressUse::kLongRuns) {
    isOn_ = isTerminal_;
    next_ = Clock::now() + kLongRun;
  }
}

void Progress::Show() {
  char line[64];
  const int length =
      std::snprintf(line, sizeof(line), isTerminal_ ? "\rfiles: %llu" : "files: %llu\n",
                    static_cast<unsigned long long>(files_));
  WriteError({line, static_cast<size_t>(length)});
  isShown_ = true;
}

void Progress::Count() {
  ++files_;
  if (!isOn_) return;
  const Clock::time_point now = Clock::now();
  if (now < next_) return;
  next_ = now + kInterval;
  Show();
}

void Progress::Hide() {
  if (isShown_ && isTerminal_) WriteError("\r\x1b[K");
  isShown_ = false;
}

void Progress::Finish() {
  if (isOn_ && !isTerminal_) Show();
  Hide();
}

}  // namespace fi::app
