// Answers as records of the output.
#ifndef FI_CLI_REPORT_H_
#define FI_CLI_REPORT_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "cli/checks.h"
#include "cli/columns.h"
#include "cli/template.h"
#include "run/answer.h"

namespace fi::app {

enum class Layout { kText, kAll, kJson, kJsonLines, kCsv, kTemplate, kNames, kExplain };
enum class Field { kName, kMime, kId, kExtensions };

struct ReportStyle {
  Layout layout = Layout::kText;
  std::vector<HashKind> hashes;  // what Answer::hashes holds

  bool isExplained = false;            // Answer::steps are shown
  std::vector<const Column*> columns;  // kCsv
  Template pattern;                    // kTemplate

  // Checks, which change the exit code, and in text are named behind the answer.
  bool checksExtension = false;
  Requirements requirements;

  // kText only, from here on.
  Field field = Field::kName;
  bool brief = false;           // no path
  bool rawPath = false;         // the path as it is and a NUL in place of the separator
  std::string separator = ":";  // stands between the path and a blank
  size_t pathWidth = 0;         // columns that path and separator take at least
};

// Each call may come from several threads at once.
class Report {
 public:
  explicit Report(ReportStyle style) : style_(std::move(style)) {}

  // Appends the record of one answer, line end included; it may be empty. The records of a JSON
  // array begin with a comma; in the first one a bracket takes its place.
  void AppendRecord(std::string_view path, uint64_t number, const Answer& answer,
                    std::string& out) const;

  // What stands before the first record; may be empty.
  std::string Head() const;

  // What follows the last record; may be empty.
  std::string_view End(bool hasRecords) const;

  bool IsArray() const { return style_.layout == Layout::kJson; }

  // True where a check that was asked for does not hold. What could not be read fails none.
  bool FailsCheck(std::string_view path, const Answer& answer) const;

 private:
  void AppendText(std::string_view path, const Answer& answer, std::string& out) const;
  void AppendPath(std::string_view path, std::string& out) const;
  void AppendField(const Answer& answer, std::string& out) const;
  void AppendFindings(std::string_view path, const Answer& answer, std::string& out) const;
  void AppendAll(const RecordSource& source, std::string& out) const;
  void AppendExplained(const RecordSource& source, std::string& out) const;
  void AppendJson(const RecordSource& source, std::string& out) const;
  void AppendCsv(const RecordSource& source, std::string& out) const;
  void AppendRename(std::string_view path, const Answer& answer, std::string& out) const;

  ReportStyle style_;
};

}  // namespace fi::app

#endif  // FI_CLI_REPORT_H_
