#include "probes/document/bibliography.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "stream/line_pattern.h"
#include "stream/text_view.h"

namespace fi {

bool IsBibTex(std::string_view text) {
  constexpr std::string_view kKinds[] = {
      "article",      "book",     "booklet",       "comment",       "conference", "inbook",
      "incollection", "manual",   "mastersthesis", "inproceedings", "misc",       "online",
      "phdthesis",    "preamble", "proceedings",   "string",        "techreport", "unpublished"};
  Lines lines(text);
  std::string_view line;
  for (uint32_t count = 0; count < kMostLines && lines.Next(&line); ++count) {
    if (line.empty() || line[0] == '%') continue;
    if (line[0] != '@') return false;
    const size_t brace = line.find('{');
    if (brace == std::string_view::npos) return false;
    const std::string_view kind = TrimBlanks(line.substr(1, brace - 1));
    return std::any_of(std::begin(kKinds), std::end(kKinds),
                       [kind](std::string_view known) { return EqualsNoCase(kind, known); });
  }
  return false;
}

bool IsReferences(std::string_view text) {
  Lines lines(SkipSpace(text));
  std::string_view line;
  if (!lines.Next(&line)) return false;
  if (line.starts_with("TY  - ")) return true;
  if (!line.starts_with("%0 ") || line.size() < 4 || !IsUpper(line[3]) || !lines.Next(&line)) {
    return false;
  }
  return line.size() > 3 && line[0] == '%' && IsUpper(line[1]) && line[2] == ' ';
}

}  // namespace fi
