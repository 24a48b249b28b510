#include "cli/usage.h"

#include <algorithm>
#include <cstddef>

#include "cli/option_table.h"

namespace fi::app {
namespace {

constexpr size_t kWidth = 80;
constexpr size_t kIndent = 27;  // of what an option means

// Appends words from the column that `out` stands at, in lines that begin at column `indent`.
void AppendWrapped(std::string_view words, size_t column, size_t indent, std::string& out) {
  while (!words.empty()) {
    const size_t end = std::min(words.find(' '), words.size());
    const std::string_view word = words.substr(0, end);
    if (column > indent && column + 1 + word.size() > kWidth) {
      out += '\n' + std::string(indent, ' ');
      column = indent;
    } else if (column > indent) {
      out += ' ';
      ++column;
    }
    out += word;
    column += word.size();
    words.remove_prefix(std::min(end + 1, words.size()));
  }
  out += '\n';
}

// "-f, --files-from F"
std::string Spellings(const OptionRow& row) {
  std::string text = row.letters.empty() ? "    " : std::string{'-', row.letters[0], ',', ' '};
  text += "--" + std::string(row.names.substr(0, row.names.find(' ')));
  if (row.use == OptionValue::kOptional) return text + "[=" + std::string(row.value) + ']';
  if (row.use != OptionValue::kNone) text += ' ' + std::string(row.value);
  return text;
}

void AppendOption(const OptionRow& row, std::string& out) {
  std::string line = "  " + Spellings(row);
  if (line.size() + 1 < kIndent) {
    line.append(kIndent - line.size(), ' ');
  } else {
    line += '\n' + std::string(kIndent, ' ');
  }
  out += line;
  AppendWrapped(row.help, kIndent, kIndent, out);
}

}  // namespace

std::string HelpText() {
  std::string out(kShortUsage);
  out += "Names the format of each PATH from its bytes; - is standard input.\n\nExamples:\n";
  for (const Example& example : Examples()) {
    std::string line = "  " + std::string(example.command);
    line.append(line.size() < 46 ? 46 - line.size() : 2, ' ');
    out += line + std::string(example.meaning) + '\n';
  }
  const OptionRow* before = nullptr;
  for (const OptionRow& row : OptionRows()) {
    if (before == nullptr || before->group != row.group)
      out += '\n' + std::string(TitleOf(row.group)) + ":\n";
    AppendOption(row, out);
    before = &row;
  }
  out += "\nExit status:\n";
  for (const ExitRow& row : ExitRows()) {
    out += "  " + std::string(row.code) + "  ";
    AppendWrapped(row.meaning, 5, 5, out);
  }
  return out;
}

}  // namespace fi::app
