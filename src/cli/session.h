// One run over all inputs.
#ifndef FI_CLI_SESSION_H_
#define FI_CLI_SESSION_H_

#include <string>
#include <string_view>

#include "cli/options.h"
#include "cli/report.h"
#include "run/answer.h"
#include "run/output.h"
#include "run/progress.h"

namespace fi::app {

// How the command ends.
enum ExitCode : int { kAllRead = 0, kSomeFailed = 1, kTrouble = 2 };

class Session {
 public:
  // Both are borrowed for the life of the session.
  Session(const Options& options, Output& output);

  // Identifies everything and writes the records. The output may still hold some of them.
  ExitCode Run();

 private:
  // Each returns false when there is no use in going on.
  bool RunArgument(const std::string& path);
  bool RunList(int descriptor);
  bool RunPath(const std::string& path);
  bool RunDirectory(const std::string& root);
  bool Deliver(std::string_view path);

  const Options& options_;
  Output& output_;
  Report report_;
  Progress progress_;
  Answer answer_;
  ExitCode exitCode_ = kAllRead;
};

// Writes "formatid: SUBJECT: REASON" to standard error, escaped; an empty subject is left out.
void Complain(std::string_view subject, std::string_view reason);

}  // namespace fi::app

#endif  // FI_CLI_SESSION_H_
