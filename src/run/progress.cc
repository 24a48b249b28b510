#include "run/progress.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <iterator>

#include "run/signals.h"
#include "run/text/escape.h"
#include "run/text/utf8.h"

namespace fi::app {
namespace {

constexpr std::chrono::milliseconds kInterval{200};
constexpr std::chrono::seconds kLongRun{1};
constexpr size_t kUsualWidth = 80;
constexpr size_t kBarWidth = 20;

// Progress that cannot be written is no reason to stop.
void WriteError(std::string_view text) {
  if (::write(STDERR_FILENO, text.data(), text.size()) < 0) return;
}

size_t TerminalWidth() {
  winsize size = {};
  if (::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return kUsualWidth;
  return size.ws_col;
}

__attribute__((format(printf, 1, 2))) std::string Format(const char* format, ...) {
  char text[64];
  va_list values;
  va_start(values, format);
  const int length = std::vsnprintf(text, sizeof(text), format, values);
  va_end(values);
  return {text, static_cast<size_t>(std::clamp(length, 0, static_cast<int>(sizeof(text)) - 1))};
}

std::string Bytes(uint64_t bytes) {
  const char* units[] = {"B", "KB", "MB", "GB", "TB", "PB"};
  auto value = static_cast<double>(bytes);
  size_t unit = 0;
  for (; value >= 1000 && unit + 1 < std::size(units); ++unit) value /= 1024;
  return Format("%.*f %s", unit == 0 ? 0 : 1, value, units[unit]);
}

std::string Duration(double seconds) {
  const auto whole = static_cast<unsigned long long>(seconds);
  if (whole >= 3600) {
    return Format("%llu:%02llu:%02llu", whole / 3600, whole / 60 % 60, whole % 60);
  }
  return Format("%llu:%02llu", whole / 60, whole % 60);
}

std::string Bar(double share) {
  const auto filled = static_cast<size_t>(std::clamp(share, 0.0, 1.0) * kBarWidth);
  return '[' + std::string(filled, '#') + std::string(kBarWidth - filled, '.') + ']';
}

// The end of an escaped path, in at most `width` columns.
std::string_view PathEnd(std::string_view path, size_t width) {
  for (size_t columns = EscapedWidth(path); columns > width; --columns) {
    path.remove_prefix(std::max<size_t>(Utf8SequenceLength(path), 1));
  }
  return path;
}

}  // namespace

std::string ProgressLine(const ProgressState& state, size_t width) {
  const double rate = state.seconds > 0 ? static_cast<double>(state.done.files) / state.seconds : 0;
  std::string line;
  if (state.isTotalKnown && state.total.files > 0) {
    const double share =
        static_cast<double>(state.done.files) / static_cast<double>(state.total.files);
    line =
        Bar(share) + Format(" %llu/%llu files", static_cast<unsigned long long>(state.done.files),
                            static_cast<unsigned long long>(state.total.files));
    line += "  " + Bytes(state.done.bytes) + " of " + Bytes(state.total.bytes);
  } else {
    line = Format("files: %llu", static_cast<unsigned long long>(state.done.files));
    line += "  " + Bytes(state.done.bytes);
  }
  line += Format("  %.0f/s", rate);
  if (state.isTotalKnown && rate > 0 && state.total.files >= state.done.files) {
    line +=
        "  " + Duration(static_cast<double>(state.total.files - state.done.files) / rate) + " left";
  }
  if (line.size() > width) line.resize(width);
  constexpr size_t kLeastPath = 8;
  if (state.path.empty() || line.size() + 2 + kLeastPath > width) return line;
  std::string path;
  AppendEscaped(state.path, path);
  return line + "  " + std::string(PathEnd(path, width - line.size() - 2));
}

Progress::Progress(ProgressUse use, const CountAhead::Inputs& inputs)
    : isOn_(use != ProgressUse::kNone), inputs_(inputs) {
  if (!isOn_) return;
  start_ = Clock::now();
  isTerminal_ = ::isatty(STDERR_FILENO) == 1;
  if (use == ProgressUse::kLongRuns) {
    isOn_ = isTerminal_;
    next_ = start_ + kLongRun;
  }
}

ProgressState Progress::State() {
  ProgressState state;
  state.done = done_;
  state.isTotalKnown = ahead_ != nullptr && ahead_->IsKnown(state.total);
  state.path = path_;
  if (start_ != Clock::time_point())
    state.seconds = std::chrono::duration<double>(Clock::now() - start_).count();
  return state;
}

void Progress::Show() {
  if (isTerminal_) {
    if (ahead_ == nullptr) ahead_ = std::make_unique<CountAhead>(inputs_);
    WriteError("\r" + ProgressLine(State(), TerminalWidth() - 1) + "\x1b[K");
  } else {
    WriteError(Format("files: %llu\n", static_cast<unsigned long long>(done_.files)));
  }
  isShown_ = true;
}

void Progress::ShowState() {
  Hide();
  WriteError("formatid: " + ProgressLine(State(), 500) + '\n');
}

void Progress::Count(std::string_view path, int64_t size) {
  ++done_.files;
  if (size > 0) done_.bytes += static_cast<uint64_t>(size);
  if (isOn_ && isTerminal_) path_ = path;
}

void Progress::Tick() {
  if (TakeStateRequest()) ShowState();
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
