// formatid: names the formats of files. See docs/command.md.

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <string>
#include <string_view>

#include "cli/catalogue.h"
#include "cli/limits.h"
#include "cli/options.h"
#include "cli/session.h"
#include "cli/usage.h"
#include "formatid/formatid.h"
#include "run/hasher.h"
#include "run/output.h"
#include "run/passwords.h"

namespace fi::app {
namespace {

// Occupies standard descriptors closed by the caller, so that no later file takes their numbers.
// The substitute refuses the use of the standard descriptor: reading for input, writing for output.
void OccupyStandardDescriptors() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(descriptor, F_GETFD) >= 0) continue;
    (void)::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
  }
}

ExitCode ShowUsage(std::string_view text) {
  // There is nowhere left to report that this cannot be written.
  (void)!::write(STDERR_FILENO, text.data(), text.size());
  return kTrouble;
}

bool ReadPasswords(const Options& options, Passwords& passwords) {
  const int descriptor = options.passwordDescriptor;
  std::string error;
  if (descriptor < 0) {
    if (passwords.ReadFile(options.passwordFile, error)) return true;
    Complain(options.passwordFile, error);
    return false;
  }
  if (passwords.ReadDescriptor(descriptor, error)) return true;
  Complain(
      descriptor == STDIN_FILENO ? "standard input" : "descriptor " + std::to_string(descriptor),
      error);
  return false;
}

ExitCode Identify(const Options& options, Output& output) {
  Hasher hasher(options.style.hashes);
  const bool hasHashes = !options.style.hashes.empty();
  if (std::string error; hasHashes && !hasher.Load(error)) {
    Complain("", error);
    return kTrouble;
  }
  const Hasher* hashes = hasHashes ? &hasher : nullptr;
  const bool hasPasswords = options.passwordDescriptor >= 0 || !options.passwordFile.empty();
  if (!hasPasswords && !options.triesDefaultPassword)
    return Session(options, nullptr, hashes, output).Run();
  Passwords passwords;
  if (hasPasswords && !ReadPasswords(options, passwords)) return kTrouble;
  if (options.triesDefaultPassword) passwords.AddDefault();
  return Session(options, &passwords, hashes, output).Run();
}

ExitCode RunTask(const Options& options, Output& output) {
  std::string text;
  switch (options.task) {
    case Task::kIdentify:
      return Identify(options, output);
    case Task::kShowHelp:
      text = HelpText();
      break;
    case Task::kShowVersion:
      text = "formatid " FORMATID_VERSION "\n";
      break;
    case Task::kShowLimits:
      text = LimitsText();
      break;
    case Task::kListFormats:
      if (!AppendCatalogue(options.catalogue, options.described, text)) {
        Complain("", "no format is of the category '" + options.described + "'");
        return kTrouble;
      }
      break;
    case Task::kDescribe:
      if (!AppendDescription(options.described, options.catalogue, text)) {
        Complain("", "no format is known as '" + options.described + "'");
        return kTrouble;
      }
      break;
  }
  (void)output.Write(text);
  return kAllRead;
}

ExitCode Main(int count, const char* const* arguments) {
  OccupyStandardDescriptors();
  // A reader that goes away is seen by the write that fails.
  (void)std::signal(SIGPIPE, SIG_IGN);
  // So is a file that may not grow.
  (void)std::signal(SIGXFSZ, SIG_IGN);
  if (count <= 1) {
    (void)ShowUsage(kShortUsage);
    return ShowUsage(kHelpHint);
  }
  Options options;
  std::string error;
  if (!ParseOptions(count, arguments, options, error)) {
    Complain("", error);
    return ShowUsage(kHelpHint);
  }
  FIInit(nullptr, nullptr, nullptr, nullptr);
  Output output(STDOUT_FILENO);
  if (options.flushEachRecord) output.FlushEachRecord();
  const ExitCode code = RunTask(options, output);
  (void)output.Flush();
  FIDeInit(nullptr, nullptr, nullptr);
  if (output.error() == 0) return code;
  Complain("standard output", std::strerror(output.error()));
  return kTrouble;
}

}  // namespace
}  // namespace fi::app

int main(int count, char** arguments) { return fi::app::Main(count, arguments); }
