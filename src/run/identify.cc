#include "run/identify.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <vector>

#include "run/hasher.h"
#include "run/input/standard_input.h"
#include "run/input/within_memory.h"
#include "run/passwords.h"

namespace fi::app {
namespace {

constexpr FIFormatFacts kUnknownFacts = {kFormatUnknown, "unknown", "", "", "", ""};
constexpr FIFormatFacts kEmptyFacts = {kFormatUnknown, "empty", "", "application/x-empty", "", ""};

void Reset(Answer& answer) {
  answer.status = AnswerStatus::kUnknown;
  answer.facts = kUnknownFacts;
  answer.basis = kFiBasisNone;
  answer.corrects = 0;
  answer.size = -1;
  answer.passwordLine = kNoPassword;
  answer.error.clear();
  answer.hashes.clear();
  answer.steps.clear();
  answer.spent = {};
}

// Fails an input that did open, so that its size stays known.
void FailRead(std::string_view reason, Answer& answer) {
  const int64_t size = answer.size;
  Fail(reason, answer);
  answer.size = size;
}

// Why an encrypted input stayed closed; nullptr for the other statuses.
const char* ProtectedReason(uint32_t status, FormatId id) {
  // Encrypted packages whose name says so: nothing failed where no password was to be had.
  constexpr FormatId kEncryptedOffice = 1819;
  constexpr FormatId kIworkPackage = 1834;
  switch (status) {
    case kFiPasswordNeeded:
      return id == kEncryptedOffice || id == kIworkPackage ? nullptr : "a password is needed";
    case kFiDecryptionFailed:
      return "the encryption is damaged or of an unknown scheme";
    case kFiWrongPassword:
      return "no password that was given fits";
    default:
      return nullptr;
  }
}

void SetFormat(const FIResult& result, Answer& answer) {
  if (answer.size == 0) {
    // Whatever the name of an empty file suggests, there is no content of any format.
    answer.facts = kEmptyFacts;
    return;
  }
  if (result.id == kFormatUnknown) return;
  answer.status = AnswerStatus::kOk;
  answer.basis = result.basis & 0xFF;
  if ((result.basis & kFiBasisCorrection) != 0) answer.corrects = result.row;
  answer.facts = {result.id,       result.name,       result.category,
                  result.mimeType, result.extensions, result.puids};
  if (result.name[0] == '\0') answer.facts.name = "unnamed format";
}

constexpr uint32_t kDeclined = 1;

uint32_t GivePassword(void* context, const FIRequest*, FIPasswordRequest* ask) noexcept {
  auto* rounds = static_cast<PasswordRounds*>(context);
  return rounds->Give(ask->attempts, ask->password, ask->capacity) ? 0 : kDeclined;
}

void NoteStep(void* context, const FITraceRecord* record) noexcept {
  // A hostile file makes many; the first of them tell enough.
  constexpr size_t kMostSteps = 10'000;
  auto& steps = *static_cast<std::vector<TraceStep>*>(context);
  if (steps.size() >= kMostSteps) return;
  (void)WithinMemory([&] {
    steps.push_back({record->kind, record->text, record->number, record->id, record->row,
                     record->offset, record->count});
  });
}

// What the status of a source that did open means for its record.
void SetStatus(uint32_t status, const FIResult& result, Answer& answer) {
  if (result.fileSize != FI_UNKNOWN_SIZE) answer.size = static_cast<int64_t>(result.fileSize);
  switch (status) {
    case kFiReadFailed:
      return FailRead(std::strerror(result.error), answer);
    case kFiNoMemory:
      return FailRead("out of memory", answer);
    default:
      break;
  }
  const char* reason = ProtectedReason(status, result.id);
  const bool isAnswered =
      status == kFiOk || status == kFiLimitReached || status == kFiPasswordNeeded;
  if (!isAnswered && reason == nullptr) return FailRead(FIStatusText(status), answer);
  SetFormat(result, answer);
  if (status == kFiLimitReached) {
    answer.status = AnswerStatus::kLimited;
    answer.error = "limit reached: ";
    answer.error += FILimitText(result.limit);
  } else if (reason != nullptr) {
    answer.status = AnswerStatus::kProtected;
    answer.error = reason;
  }
}

// The library counts the rounds of all passwords of a request together.
uint64_t RoundsForAll(uint64_t ofOne) {
  constexpr uint64_t kUsual = 1'000'000;
  if (ofOne == 0) ofOne = kUsual;
  return ofOne > FI_NO_LIMIT / PasswordRounds::kPerRound ? FI_NO_LIMIT
                                                         : ofOne * PasswordRounds::kPerRound;
}

// The one call of the library. False, with its errno, when the source does not open.
bool IdentifySource(const FISource& source, const IdentifySettings& settings, Answer& answer,
                    int& error) {
  FIRequest request = FI_REQUEST_INIT;
  FIResult result = FI_RESULT_INIT;
  PasswordRounds rounds(settings.passwords);
  request.flags = settings.flags;
  request.source = source;
  request.limits = settings.limits;
  if (settings.passwords != nullptr) {
    request.limits.keyRounds = RoundsForAll(settings.limits.keyRounds);
    request.password = GivePassword;
    request.passwordContext = &rounds;
  }
  if (settings.isTraced) {
    request.trace = NoteStep;
    request.traceContext = &answer.steps;
  }
  uint32_t status = kFiOk;
  do {
    answer.steps.clear();
    status = FIIdentify(&request, &result);
  } while (status == kFiWrongPassword && rounds.Next());
  if (status == kFiNotOpened || status == kFiNotFound || status == kFiAccessDenied) {
    error = result.error;
    return false;
  }
  answer.spent = result.spent;
  SetStatus(status, result, answer);
  if (status == kFiOk) answer.passwordLine = rounds.lastLine();
  return true;
}

const char* KindOf(mode_t mode) {
  if (S_ISFIFO(mode)) return "is a fifo";
  if (S_ISSOCK(mode)) return "is a socket";
  if (S_ISCHR(mode)) return "is a character device";
  if (S_ISBLK(mode)) return "is a block device";
  return nullptr;
}

// Says why `path` did not open with `error`. Only failures pay for the second look.
void FailOpen(const char* path, int error, Answer& answer) {
  struct stat status;
  if (error == EISDIR) return Fail("is a directory (use -r)", answer);
  const char* kind = ::stat(path, &status) == 0 ? KindOf(status.st_mode) : nullptr;
  Fail(kind != nullptr ? kind : std::strerror(error), answer);
}

// Says why what was opened as `descriptor` cannot be identified.
void FailDescriptor(int descriptor, int error, Answer& answer) {
  struct stat status;
  if (error == EISDIR) return Fail("is a directory", answer);
  const char* kind = ::fstat(descriptor, &status) == 0 ? KindOf(status.st_mode) : nullptr;
  Fail(kind != nullptr ? kind : std::strerror(error), answer);
}

class OwnedDescriptor {
 public:
  explicit OwnedDescriptor(int descriptor) : descriptor_(descriptor) {}
  OwnedDescriptor(const OwnedDescriptor&) = delete;
  OwnedDescriptor& operator=(const OwnedDescriptor&) = delete;
  ~OwnedDescriptor() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }

  int get() const { return descriptor_; }

 private:
  int descriptor_;
};

// `path` is what the name of the file is taken from.
void IdentifyDescriptor(int descriptor, const std::string& path, const IdentifySettings& settings,
                        Answer& answer) {
  FISource source = {};
  source.kind = kFiSourceDescriptor;
  source.descriptor = descriptor;
  source.name = path.c_str();
  int error = 0;
  if (!IdentifySource(source, settings, answer, error))
    return FailDescriptor(descriptor, error, answer);
  if (settings.hasher != nullptr && answer.status != AnswerStatus::kError) {
    error = settings.hasher->HashFile(descriptor, answer.hashes);
    if (error != 0) FailRead(std::strerror(error), answer);
  }
}

// A file met in a directory. Nothing that is a link by now is followed.
void IdentifyBelow(Job& job, const IdentifySettings& settings) {
  const OwnedDescriptor file(OpenBelow(job.directory->get(), job.path.c_str() + job.rootLength, 0));
  if (file.get() < 0) {
    const bool isLink = errno == ELOOP;
    return Fail(isLink ? "is a symbolic link (not followed)" : std::strerror(errno), job.answer);
  }
  struct stat status;
  if (settings.largest >= 0 && ::fstat(file.get(), &status) == 0 &&
      status.st_size > settings.largest) {
    job.isSkipped = true;
    return;
  }
  IdentifyDescriptor(file.get(), job.path, settings, job.answer);
}

// Opens a file that was named by a descriptor of ours, for what the library's own opening cannot
// do. What is no regular file is not opened, so that nobody at its other end is disturbed.
void IdentifyOpened(const std::string& path, const IdentifySettings& settings, Answer& answer) {
  const bool followsLink = settings.links != LinkUse::kNone;
  struct stat status;
  if (::fstatat(AT_FDCWD, path.c_str(), &status, followsLink ? 0 : AT_SYMLINK_NOFOLLOW) != 0)
    return Fail(std::strerror(errno), answer);
  if (S_ISLNK(status.st_mode)) return Fail("is a symbolic link (not followed)", answer);
  if (S_ISDIR(status.st_mode)) return FailOpen(path.c_str(), EISDIR, answer);
  if (const char* kind = KindOf(status.st_mode)) return Fail(kind, answer);
  const OwnedDescriptor file(::open(
      path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK | (followsLink ? 0 : O_NOFOLLOW)));
  if (file.get() < 0) {
    const bool isLink = errno == ELOOP && !followsLink;
    return Fail(isLink ? "is a symbolic link (not followed)" : std::strerror(errno), answer);
  }
  IdentifyDescriptor(file.get(), path, settings, answer);
}

void IdentifyPath(const std::string& path, const IdentifySettings& settings, Answer& answer) {
  // The system would take the path up to there, which names another file.
  if (path.find('\0') != std::string::npos) return Fail("the name holds a NUL byte", answer);
  if (settings.links == LinkUse::kNone || settings.hasher != nullptr)
    return IdentifyOpened(path, settings, answer);
  FISource source = {};
  source.kind = kFiSourcePath;
  source.path = path.c_str();
  int error = 0;
  if (!IdentifySource(source, settings, answer, error)) FailOpen(path.c_str(), error, answer);
}

void IdentifyStandardInput(const IdentifySettings& settings, Answer& answer) {
  StandardInput input(settings.stdinLimit);
  if (!input.Open(STDIN_FILENO)) {
    return Fail(input.IsOverLimit() ? "is larger than --stdin-limit allows" : std::strerror(errno),
                answer);
  }
  FISource source = {};
  source.kind = input.descriptor() < 0 ? kFiSourceMemory : kFiSourceDescriptor;
  source.descriptor = input.descriptor();
  source.data = input.memory().data();
  source.size = input.memory().size();
  source.name = settings.stdinName;
  int error = 0;
  if (!IdentifySource(source, settings, answer, error)) return Fail(std::strerror(error), answer);
  if (settings.hasher == nullptr || answer.status == AnswerStatus::kError) return;
  if (input.descriptor() < 0) return settings.hasher->HashMemory(input.memory(), answer.hashes);
  error = settings.hasher->HashFile(input.descriptor(), answer.hashes);
  if (error != 0) FailRead(std::strerror(error), answer);
}

}  // namespace

void Fail(std::string_view reason, Answer& answer) {
  Reset(answer);
  answer.status = AnswerStatus::kError;
  answer.error = reason;
}

void Identify(Job& job, const IdentifySettings& settings) {
  Reset(job.answer);
  switch (job.kind) {
    case Job::Kind::kPath:
      return IdentifyPath(job.path, settings, job.answer);
    case Job::Kind::kBelow:
      return IdentifyBelow(job, settings);
    case Job::Kind::kStandardInput:
      return IdentifyStandardInput(settings, job.answer);
    case Job::Kind::kFault:
      return Fail(job.fault, job.answer);
  }
}

}  // namespace fi::app
