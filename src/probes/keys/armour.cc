#include "probes/keys/armour.h"

#include <algorithm>

#include "registry/format_ids.h"
#include "stream/text_view.h"

namespace fi {
namespace {

constexpr size_t kLastLine = 1024;  // greatest offset of the line
constexpr std::string_view kBegin = "-----BEGIN ";
constexpr std::string_view kEnd = "-----";

// Characters of the first line of base64 that tell it from a word. An empty list of revoked
// certificates has more.
constexpr size_t kMinData = 16;

bool IsLabelCharacter(char c) { return IsUpper(c) || IsDigit(c) || c == ' '; }

// The label of an opening line, empty where it is none.
std::string_view LabelOf(std::string_view line) {
  line = TrimBlanks(line);
  if (!line.starts_with(kBegin)) return {};
  line.remove_prefix(kBegin.size());
  if (!line.ends_with(kEnd)) return {};
  line.remove_suffix(kEnd.size());
  return std::all_of(line.begin(), line.end(), IsLabelCharacter) ? line : std::string_view();
}

bool IsBase64(std::string_view line) {
  return line.size() >= kMinData && std::all_of(line.begin(), line.end(), [](char c) {
           return IsLetter(c) || IsDigit(c) || c == '+' || c == '/' || c == '=';
         });
}

// "Proc-Type: 4,ENCRYPTED".
bool IsField(std::string_view line) {
  const size_t colon = line.find(':');
  if (colon == 0 || colon == std::string_view::npos) return false;
  const std::string_view name = line.substr(0, colon);
  return std::all_of(name.begin(), name.end(), [](char c) { return IsLetter(c) || c == '-'; });
}

// Whether fields or data follow the opening line.
bool Opens(Lines lines) {
  std::string_view line;
  while (lines.Next(&line)) {
    line = TrimBlanks(line);
    if (!line.empty()) return IsBase64(line) || IsField(line);
  }
  return false;
}

}  // namespace

FormatId ArmourProbe(std::string_view text) {
  if (text.substr(0, kLastLine + kBegin.size()).find(kBegin) == std::string_view::npos) {
    return kNoMatch;
  }
  Lines lines(text);
  std::string_view line;
  for (bool isFirst = true; lines.Next(&line); isFirst = false) {
    if (static_cast<size_t>(line.data() - text.data()) > kLastLine) return kNoMatch;
    // Armour stands at the start of a line; in a source it is indented, or in quotes.
    if (!line.starts_with('-')) continue;
    const std::string_view label = LabelOf(line);
    if (label.empty()) continue;
    if (label.starts_with("PGP ")) return isFirst ? kFormatPgpArmoured : kNoMatch;
    if (Opens(lines)) return kFormatPem;
  }
  return kNoMatch;
}

}  // namespace fi
