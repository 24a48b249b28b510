#include "cli/session.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "run/escape.h"
#include "run/file_walk.h"
#include "run/identify.h"
#include "run/path_list.h"

namespace fi::app {
namespace {

// A longer path stands out rather than pushing all answers to the right.
constexpr size_t kWidestColumn = 40;

// Answers stand in a column where the reader is a person and all paths are known beforehand.
size_t ColumnWidth(const Options& options, const Output& output) {
  if (!output.IsTerminal() || options.isRecursive || !options.listFile.empty()) return 0;
  size_t widest = 0;
  std::string escaped;
  for (const std::string& path : options.paths) {
    escaped.clear();
    AppendEscaped(path == "-" && !options.stdinName.empty() ? options.stdinName : path, escaped);
    widest = std::max(widest, EscapedWidth(escaped));
  }
  return std::min(widest, kWidestColumn) + EscapedWidth(options.style.separator);
}

ReportStyle StyleOf(const Options& options, const Output& output) {
  ReportStyle style = options.style;
  style.pathWidth = ColumnWidth(options, output);
  return style;
}

// A terminal that shows the answers shows how far the run is.
ProgressUse ProgressOf(const Options& options, const Output& output) {
  const bool isMany = options.isRecursive || !options.listFile.empty() || options.paths.size() > 1;
  if (options.progress == ProgressUse::kAlways) return ProgressUse::kAlways;
  return isMany && !output.IsTerminal() ? options.progress : ProgressUse::kNone;
}

// The open list of paths; standard input is not closed with it.
class ListFile {
 public:
  explicit ListFile(const std::string& name)
      : isStandardInput_(name == "-"),
        descriptor_(isStandardInput_ ? STDIN_FILENO : ::open(name.c_str(), O_RDONLY | O_CLOEXEC)) {}
  ListFile(const ListFile&) = delete;
  ListFile& operator=(const ListFile&) = delete;
  ~ListFile() {
    if (!isStandardInput_ && descriptor_ >= 0) ::close(descriptor_);
  }

  int descriptor() const { return descriptor_; }

 private:
  bool isStandardInput_;
  int descriptor_;
};

}  // namespace

void Complain(std::string_view subject, std::string_view reason) {
  std::string line = "formatid: ";
  if (!subject.empty()) {
    AppendEscaped(subject, line);
    line += ": ";
  }
  AppendEscaped(reason, line);
  line += '\n';
  // There is nowhere left to report that this cannot be written.
  if (::write(STDERR_FILENO, line.data(), line.size()) < 0) return;
}

Session::Session(const Options& options, Output& output)
    : options_(options),
      output_(output),
      report_(StyleOf(options, output)),
      progress_(ProgressOf(options, output)) {}

bool Session::Deliver(std::string_view path) {
  if (IsFailure(answer_)) exitCode_ = kSomeFailed;
  if (output_.IsTerminal()) progress_.Hide();
  const bool written = output_.Write(report_.Record(path, answer_));
  progress_.Count();
  return written;
}

bool Session::RunDirectory(const std::string& root) {
  FileWalk walk(root, options_.links);
  while (walk.Next()) {
    if (walk.fault().empty()) {
      // A link that the walk delivers leads nowhere, or all links are to be followed.
      IdentifyPath(walk.path(), LinkUse::kAll, options_.flags, answer_);
    } else {
      Fail(walk.fault(), answer_);
    }
    if (!Deliver(walk.path())) return false;
  }
  return true;
}

bool Session::RunPath(const std::string& path) {
  IdentifyPath(path, options_.links, options_.flags, answer_);
  if (answer_.isDirectory && options_.isRecursive) return RunDirectory(path);
  return Deliver(path);
}

bool Session::RunArgument(const std::string& path) {
  if (path != "-") return RunPath(path);
  const bool isNamed = !options_.stdinName.empty();
  IdentifyStandardInput(isNamed ? options_.stdinName.c_str() : nullptr, options_.flags, answer_);
  return Deliver(isNamed ? options_.stdinName : path);
}

bool Session::RunList(int descriptor) {
  PathList list(descriptor, options_.listTerminator);
  std::string path;
  ListStep step = ListStep::kPath;
  while ((step = list.Next(path)) == ListStep::kPath) {
    if (!RunPath(path)) return false;
  }
  if (step == ListStep::kEnd) return true;
  Complain(options_.listFile, std::strerror(errno));
  exitCode_ = kTrouble;
  return true;
}

ExitCode Session::Run() {
  const bool hasList = !options_.listFile.empty();
  const ListFile list(hasList ? options_.listFile : "-");
  if (list.descriptor() < 0) {
    Complain(options_.listFile, std::strerror(errno));
    return kTrouble;
  }
  bool goesOn = true;
  for (const std::string& path : options_.paths) {
    goesOn = goesOn && RunArgument(path);
  }
  if (goesOn && hasList) goesOn = RunList(list.descriptor());
  if (goesOn) (void)output_.Write(report_.End());
  progress_.Finish();
  return exitCode_;
}

}  // namespace fi::app
