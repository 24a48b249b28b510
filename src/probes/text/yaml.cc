#include "probes/text/yaml.h"

#include "registry/format_ids.h"
#include "stream/text_view.h"

namespace fi {
namespace {

// A mark of YAML stands alone, or a blank follows it.
bool IsMark(std::string_view line, std::string_view mark) {
  if (!line.starts_with(mark)) return false;
  return line.size() == mark.size() || IsSpaceOrTab(line[mark.size()]);
}

// "key:", "key: value" or "- item".
bool IsBlockEntry(std::string_view line) {
  if (IsMark(line, "-")) return true;
  for (size_t colon = line.find(':'); colon != std::string_view::npos;
       colon = line.find(':', colon + 1)) {
    if (colon > 0 && IsMark(line.substr(colon), ":")) return true;
  }
  return false;
}

bool IsComment(std::string_view line) { return line.empty() || line[0] == '#'; }

}  // namespace

FormatId YamlProbe(std::string_view text, const char* extension) {
  const std::string_view named = extension;
  if (named != "YAML" && named != "YML") return kNoMatch;
  Lines lines(text);
  std::string_view line;
  while (lines.Next(&line)) {
    line = TrimBlanks(line);
    if (IsComment(line) || IsMark(line, "%YAML") || IsMark(line, "%TAG") || IsMark(line, "---")) {
      continue;
    }
    return IsBlockEntry(line) ? kFormatYaml : kNoMatch;
  }
  return kNoMatch;
}

}  // namespace fi
