// One run over all inputs.
#ifndef FI_CLI_SESSION_H_
#define FI_CLI_SESSION_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "cli/options.h"
#include "cli/report.h"
#include "run/identify.h"
#include "run/output.h"
#include "run/pipeline.h"
#include "run/progress.h"

namespace fi::app {

// How the command ends.
enum ExitCode : int { kAllRead = 0, kSomeFailed = 1, kTrouble = 2, kCheckFailed = 3 };

class Session {
 public:
  // All are borrowed for the life of the session; `passwords` and `hasher` may be nullptr.
  Session(const Options& options, const Passwords* passwords, const Hasher* hasher, Output& output);

  // Identifies everything and writes the records. The output may still hold some of them. A signal
  // that asks for the end ends the process here, after whole records.
  ExitCode Run();

 private:
  // Each returns false when there is no use in going on.
  bool AddAll();
  bool AddArgument(const std::string& path);
  bool AddList(int descriptor);
  bool AddPath(const std::string& path);
  bool AddDirectory(const std::string& root);
  bool Add(Job::Kind kind, std::string_view path);
  bool Deliver(Job& job);
  bool Tick();

  void Work(Job& job) const;
  bool IsDirectory(const std::string& path) const;
  void EndWithoutMemory();

  const Options& options_;
  Output& output_;
  Report report_;
  Progress progress_;
  IdentifySettings settings_;
  Pipeline pipeline_;
  std::unique_ptr<char[]> reserve_;  // freed when memory ran out
  uint64_t added_ = 0;
  bool hasRecords_ = false;
  bool hasFailed_ = false;
  bool hasFailedCheck_ = false;
  bool isInTrouble_ = false;
};

// Writes "formatid: SUBJECT: REASON" to standard error, escaped; an empty subject is left out.
void Complain(std::string_view subject, std::string_view reason);

}  // namespace fi::app

#endif  // FI_CLI_SESSION_H_
