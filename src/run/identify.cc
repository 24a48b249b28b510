#include "run/identify.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <string>

#include "formatid/formatid.h"
#include "run/hasher.h"
#include "run/passwords.h"
#include "run/standard_input.h"

namespace fi::app {
namespace {

constexpr FIFormatFacts kUnknownFacts = {kFormatUnknown, "unknown", "", "", "", ""};
constexpr FIFormatFacts kEmptyFacts = {kFormatUnknown, "empty", "", "application/x-empty", "", ""};

struct HandleCloser {
  void operator()(IOHandle* handle) const { (void)handle->operations->close(handle); }
};
using OwnedHandle = std::unique_ptr<IOHandle, HandleCloser>;

void Reset(Answer& answer) {
  answer.status = AnswerStatus::kUnknown;
  answer.facts = kUnknownFacts;
  answer.basis = kFiBasisNone;
  answer.corrects = 0;
  answer.size = -1;
  answer.passwordLine = 0;
  answer.error.clear();
  answer.hashes.clear();
}

int64_t SizeOf(IOHandle* handle) {
  const IOHandleOperations& operations = *handle->operations;
  int64_t size = -1;
  if (operations.seek64(handle, kIoFromEnd, 0) != 0) return -1;
  return operations.tell64(handle, &size) == 0 ? size : -1;
}

int32_t ReadError(IOHandle* handle) {
  int32_t error = 0;
  return handle->operations->getInfo(handle, kIoInfoReadError, &error) == 0 ? error : 0;
}

// Fails an input that did open, so that its size stays known.
void FailRead(std::string_view reason, Answer& answer) {
  const int64_t size = answer.size;
  Fail(reason, answer);
  answer.size = size;
}

// Why an encrypted input stayed closed; nullptr for the other statuses.
const char* ProtectedReason(uint32_t status) {
  switch (status) {
    case kFiPasswordNeeded:
      return "a password is needed";
    case kFiDecryptionFailed:
      return "the encryption is damaged or of an unknown scheme";
    case kFiWrongPassword:
      return "no password that was given fits";
    default:
      return nullptr;
  }
}

void SetFormat(FormatId id, uint16_t basis, Answer& answer) {
  if (answer.size == 0) {
    // Whatever the name of an empty file suggests, there is no content of any format.
    answer.facts = kEmptyFacts;
    return;
  }
  if (id == kFormatUnknown) return;
  answer.status = AnswerStatus::kOk;
  answer.basis = basis;
  if (UTGetFormatFacts(id, &answer.facts) != 0)
    answer.facts = {id, "unnamed format", "", "", "", ""};
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
  IOHandle* opened = nullptr;
  const IODescriptorSource source = {descriptor, path.c_str()};
  if (IOOpen(&opened, kIoSourceDescriptor, &source, 1) != kIoOk)
    return FailDescriptor(descriptor, errno, answer);
  {
    const OwnedHandle handle(opened);
    IdentifyHandle(opened, settings, answer);
  }
  if (settings.hasher != nullptr && answer.status != AnswerStatus::kError) {
    const int error = settings.hasher->HashFile(descriptor, answer.hashes);
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
  IOHandle* opened = nullptr;
  if (IOOpen(&opened, kIoSourcePath, path.c_str(), 1) != kIoOk)
    return FailOpen(path.c_str(), errno, answer);
  const OwnedHandle handle(opened);
  IdentifyHandle(opened, settings, answer);
}

void IdentifyStandardInput(const IdentifySettings& settings, Answer& answer) {
  StandardInput input(settings.stdinLimit);
  IOHandle* opened = nullptr;
  if (!input.Open(STDIN_FILENO, settings.stdinName, &opened)) {
    return Fail(input.IsOverLimit() ? "is larger than --stdin-limit allows" : std::strerror(errno),
                answer);
  }
  {
    const OwnedHandle handle(opened);
    IdentifyHandle(opened, settings, answer);
  }
  if (settings.hasher == nullptr || answer.status == AnswerStatus::kError) return;
  if (input.descriptor() < 0) return settings.hasher->HashMemory(input.memory(), answer.hashes);
  const int error = settings.hasher->HashFile(input.descriptor(), answer.hashes);
  if (error != 0) FailRead(std::strerror(error), answer);
}

}  // namespace

void Fail(std::string_view reason, Answer& answer) {
  Reset(answer);
  answer.status = AnswerStatus::kError;
  answer.error = reason;
}

void IdentifyHandle(IOHandle* handle, const IdentifySettings& settings, Answer& answer) {
  Reset(answer);
  FormatId id = kFormatUnknown;
  FIEvidence evidence{};
  uint32_t status = kFiOk;
  PasswordRounds rounds(settings.passwords);
  do {
    status = FIIdHandleEvidence(handle, settings.flags, &id, &evidence);
  } while (status == kFiWrongPassword && rounds.Next());
  answer.size = SizeOf(handle);
  // An answer that rests on what could be read before a fault would look like a sound one.
  if (const int32_t error = ReadError(handle); error != 0) {
    return FailRead(std::strerror(error), answer);
  }
  const char* reason = ProtectedReason(status);
  if (status != kFiOk && reason == nullptr) {
    return FailRead("identification failed (status " + std::to_string(status) + ")", answer);
  }
  SetFormat(id, evidence.basis & 0xFF, answer);
  if ((evidence.basis & kFiBasisCorrection) != 0) answer.corrects = evidence.signature;
  if (reason != nullptr) {
    answer.status = AnswerStatus::kProtected;
    answer.error = reason;
  }
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
