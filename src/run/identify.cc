#include "run/identify.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>

#include "formatid/formatid.h"
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
  answer.isDirectory = false;
  answer.error.clear();
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
void FailOpen(const std::string& path, int error, Answer& answer) {
  struct stat status;
  if (error == EISDIR) {
    Fail("is a directory (use -r)", answer);
    answer.isDirectory = true;
    return;
  }
  const char* kind = ::stat(path.c_str(), &status) == 0 ? KindOf(status.st_mode) : nullptr;
  Fail(kind != nullptr ? kind : std::strerror(error), answer);
}

bool IsLink(const std::string& path) {
  struct stat status;
  return ::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

}  // namespace

void Fail(std::string_view reason, Answer& answer) {
  Reset(answer);
  answer.status = AnswerStatus::kError;
  answer.error = reason;
}

void IdentifyHandle(IOHandle* handle, uint32_t flags, Answer& answer) {
  Reset(answer);
  FormatId id = kFormatUnknown;
  FIEvidence evidence{};
  const uint32_t status = FIIdHandleEvidence(handle, flags, &id, &evidence);
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

void IdentifyPath(const std::string& path, LinkUse links, uint32_t flags, Answer& answer) {
  Reset(answer);
  // The system would take the path up to there, which names another file.
  if (path.find('\0') != std::string::npos) return Fail("the name holds a NUL byte", answer);
  if (links == LinkUse::kNone && IsLink(path))
    return Fail("is a symbolic link (not followed)", answer);
  IOHandle* opened = nullptr;
  if (IOOpen(&opened, kIoSourcePath, path.c_str(), 1) != kIoOk)
    return FailOpen(path, errno, answer);
  const OwnedHandle handle(opened);
  IdentifyHandle(opened, flags, answer);
}

void IdentifyStandardInput(const char* name, uint32_t flags, Answer& answer) {
  Reset(answer);
  StandardInput input;
  IOHandle* opened = nullptr;
  if (!input.Open(STDIN_FILENO, name, &opened)) return Fail(std::strerror(errno), answer);
  const OwnedHandle handle(opened);
  IdentifyHandle(opened, flags, answer);
}

}  // namespace fi::app
