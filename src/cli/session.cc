#include "cli/session.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "run/input/file_walk.h"
#include "run/input/path_list.h"
#include "run/input/within_memory.h"
#include "run/signals.h"
#include "run/text/escape.h"

namespace fi::app {
namespace {

// A longer path stands out rather than pushing all answers to the right.
constexpr size_t kWidestColumn = 40;

// Memory for what is left to do when there is no other.
constexpr size_t kReserve = size_t{64} << 10;

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

bool IsMany(const Options& options) {
  return options.isRecursive || !options.listFile.empty() || options.paths.size() > 1;
}

// A terminal that shows the answers shows how far the run is.
ProgressUse ProgressOf(const Options& options, const Output& output) {
  if (options.progress == ProgressUse::kAlways) return ProgressUse::kAlways;
  return IsMany(options) && !output.IsTerminal() ? options.progress : ProgressUse::kNone;
}

CountAhead::Inputs CountedInputs(const Options& options) {
  CountAhead::Inputs inputs;
  inputs.paths = &options.paths;
  inputs.walk = &options.walk;
  inputs.isRecursive = options.isRecursive;
  // What standard input will name is not known beforehand.
  if (!options.listFile.empty() && options.listFile != "-") inputs.list = options.listFile.c_str();
  inputs.terminator = options.listTerminator;
  return inputs;
}

IdentifySettings SettingsOf(const Options& options, const Passwords* passwords,
                            const Hasher* hasher) {
  IdentifySettings settings;
  settings.links = options.walk.links;
  settings.flags = options.flags;
  settings.limits = options.limits;
  settings.isTraced = options.style.isExplained;
  settings.passwords = passwords;
  settings.hasher = hasher;
  settings.largest = options.largest;
  settings.stdinLimit = options.stdinLimit;
  if (!options.stdinName.empty()) settings.stdinName = options.stdinName.c_str();
  return settings;
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

Session::Session(const Options& options, const Passwords* passwords, const Hasher* hasher,
                 Output& output)
    : options_(options),
      output_(output),
      report_(StyleOf(options, output)),
      progress_(ProgressOf(options, output), CountedInputs(options)),
      settings_(SettingsOf(options, passwords, hasher)),
      pipeline_(options.run,
                {[this](Job& job) { Work(job); }, [this](Job& job) { return Deliver(job); },
                 [this] { return Tick(); }}),
      reserve_(std::make_unique_for_overwrite<char[]>(kReserve)) {}

// Called by several threads at once.
void Session::Work(Job& job) const {
  Identify(job, settings_);
  if (job.isSkipped) return;
  report_.AppendRecord(job.path, job.number, job.answer, job.record);
  job.failsCheck = report_.FailsCheck(job.path, job.answer);
}

bool Session::Deliver(Job& job) {
  if (job.isOutOfMemory) {
    EndWithoutMemory();
    return false;
  }
  if (EndingSignal() != 0) return false;
  if (job.isSkipped) return true;
  hasFailed_ = hasFailed_ || IsFailure(job.answer);
  hasFailedCheck_ = hasFailedCheck_ || job.failsCheck;
  if (output_.IsTerminal()) progress_.Hide();
  if (report_.IsArray() && !hasRecords_) job.record[0] = '[';
  hasRecords_ = true;
  const bool isWritten = output_.Write(job.record);
  progress_.Count(job.path, job.answer.size);
  progress_.Tick();
  return isWritten;
}

bool Session::Tick() {
  progress_.Tick();
  return EndingSignal() == 0;
}

bool Session::Add(Job::Kind kind, std::string_view path) {
  Job& job = pipeline_.Next();
  job.kind = kind;
  job.path = path;
  job.number = ++added_;
  return pipeline_.Commit();
}

bool Session::AddDirectory(const std::string& root) {
  FileWalk walk(root, options_.walk);
  while (walk.Next()) {
    Job& job = pipeline_.Next();
    if (!walk.fault().empty()) {
      job.fault = walk.fault();
      if (!Add(Job::Kind::kFault, walk.path())) return false;
      continue;
    }
    job.directory = walk.directory();
    job.rootLength = walk.rootLength();
    const bool isBelow = job.directory != nullptr;
    if (!Add(isBelow ? Job::Kind::kBelow : Job::Kind::kPath, walk.path())) return false;
  }
  return true;
}

bool Session::IsDirectory(const std::string& path) const {
  struct stat status;
  const bool follows = options_.walk.links != LinkUse::kNone;
  return ::fstatat(AT_FDCWD, path.c_str(), &status, follows ? 0 : AT_SYMLINK_NOFOLLOW) == 0 &&
         S_ISDIR(status.st_mode);
}

bool Session::AddPath(const std::string& path) {
  const bool isWhole = path.find('\0') == std::string::npos;
  if (options_.isRecursive && isWhole && IsDirectory(path)) return AddDirectory(path);
  return Add(Job::Kind::kPath, path);
}

bool Session::AddArgument(const std::string& path) {
  if (path != "-") return AddPath(path);
  return Add(Job::Kind::kStandardInput, options_.stdinName.empty() ? path : options_.stdinName);
}

// Who writes the list may wait for the answers to what it named so far.
bool Session::AddList(int descriptor) {
  PathList list(descriptor, options_.listTerminator,
                [this] { return pipeline_.Drain() && Tick(); });
  std::string path;
  ListStep step = ListStep::kPath;
  while ((step = list.Next(path)) == ListStep::kPath) {
    if (!AddPath(path)) return false;
  }
  if (step == ListStep::kEnd) return true;
  Complain(options_.listFile, std::strerror(errno));
  isInTrouble_ = true;
  return true;
}

bool Session::AddAll() {
  const bool hasList = !options_.listFile.empty();
  const ListFile list(hasList ? options_.listFile : "-");
  if (list.descriptor() < 0) {
    Complain(options_.listFile, std::strerror(errno));
    isInTrouble_ = true;
    return false;
  }
  if (const std::string head = report_.Head(); !head.empty() && !output_.Write(head)) return false;
  for (const std::string& path : options_.paths) {
    if (!AddArgument(path)) return false;
  }
  if (hasList && !AddList(list.descriptor())) return false;
  return pipeline_.Drain();
}

// Needs no memory itself.
void Session::EndWithoutMemory() {
  constexpr std::string_view kMessage = "formatid: out of memory\n";
  reserve_.reset();
  isInTrouble_ = true;
  if (::write(STDERR_FILENO, kMessage.data(), kMessage.size()) < 0) return;
}

ExitCode Session::Run() {
  if (IsMany(options_)) WatchSignals();
  bool isWhole = false;
  const bool isWithinMemory = WithinMemory([&] { isWhole = AddAll(); });
  if (!isWithinMemory) {
    EndWithoutMemory();
    (void)WithinMemory([this] { pipeline_.Abandon(); });
  }
  const int signal = EndingSignal();
  if (signal != 0) pipeline_.Abandon();
  // An array that is ended early is one all the same.
  const bool canWrite = output_.error() == 0;
  if ((isWhole || signal != 0) && canWrite) (void)output_.Write(report_.End(hasRecords_));
  progress_.Finish();
  if (signal != 0) {
    (void)output_.Flush();
    EndBySignal(signal);
  }
  if (isInTrouble_) return kTrouble;
  if (hasFailed_) return kSomeFailed;
  return hasFailedCheck_ ? kCheckFailed : kAllRead;
}

}  // namespace fi::app
