#include "probes/document/latex.h"

#include "registry/format_ids.h"
#include "stream/text_view.h"

namespace fi {
namespace {

constexpr std::string_view kCommands[] = {"\\documentclass", "\\documentstyle"};

// Whether the command's options or argument may follow.
bool Opens(std::string_view behind) {
  return behind.empty() || behind[0] == '[' || behind[0] == '{' || behind[0] == '%' ||
         IsSpaceOrTab(behind[0]);
}

}  // namespace

FormatId LatexProbe(std::string_view text) {
  // A source in another language, or a book on LaTeX, may hold such a line, but begins otherwise.
  const std::string_view start = SkipSpace(text);
  if (!start.starts_with('\\') && !start.starts_with('%')) return kNoMatch;
  Lines lines(text);
  std::string_view line;
  while (lines.Next(&line)) {
    for (const std::string_view command : kCommands) {
      if (line.starts_with(command) && Opens(line.substr(command.size()))) return kFormatLatex;
    }
  }
  return kNoMatch;
}

}  // namespace fi
