// Answers as records of the output.
#ifndef FI_CLI_REPORT_H_
#define FI_CLI_REPORT_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "run/answer.h"

namespace fi::app {

enum class Layout { kText, kJson, kJsonLines };
enum class Field { kName, kMime, kId, kExtensions };

struct ReportStyle {
  Layout layout = Layout::kText;
  // Text only, from here on.
  Field field = Field::kName;
  bool brief = false;           // no path
  bool rawPath = false;         // the path as it is and a NUL in place of the separator
  std::string separator = ":";  // stands between the path and a blank
  size_t pathWidth = 0;         // columns that path and separator take at least
};

class Report {
 public:
  explicit Report(const ReportStyle& style) : style_(style) {}

  // The record of one answer, line end included. Valid until the next call.
  std::string_view Record(std::string_view path, const Answer& answer);

  // What follows the last record; may be empty.
  std::string_view End() const;

 private:
  void AppendText(std::string_view path, const Answer& answer);
  void AppendPath(std::string_view path);
  void AppendField(const Answer& answer);
  void AppendJson(std::string_view path, const Answer& answer);

  ReportStyle style_;
  std::string record_;
  bool isFirst_ = true;
};

}  // namespace fi::app

#endif  // FI_CLI_REPORT_H_
