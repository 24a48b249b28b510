#include "probes/text/line_formats.h"

#include <algorithm>
#include <cstdint>

#include "probes/text/json.h"
#include "registry/format_ids.h"
#include "stream/text_view.h"

namespace fi {
namespace {

constexpr uint32_t kMostLines = 32;

// Whether `line` begins as the pattern says: "9" is any digit, all else itself.
bool Matches(std::string_view line, std::string_view pattern) {
  if (line.size() < pattern.size()) return false;
  for (size_t i = 0; i < pattern.size(); ++i) {
    if (pattern[i] == '9' ? !IsDigit(line[i]) : line[i] != pattern[i]) return false;
  }
  return true;
}

bool IsSubRip(std::string_view text) {
  constexpr std::string_view kTimes = "99:99:99,999 --> 99:99:99,999";
  Lines lines(SkipSpace(text));
  std::string_view line;
  if (!lines.Next(&line)) return false;
  if (Matches(line, kTimes)) return true;
  const std::string_view number = TrimBlanks(line);
  const bool isNumber = !number.empty() && std::all_of(number.begin(), number.end(), IsDigit);
  return isNumber && lines.Next(&line) && Matches(line, kTimes);
}

bool IsWebVtt(std::string_view text) {
  constexpr std::string_view kMark = "WEBVTT";
  if (!text.starts_with(kMark)) return false;
  return text.size() == kMark.size() || IsWhiteSpace(text[kMark.size()]);
}

// The old file, the new file and the first hunk on three lines, whatever stands before them.
bool IsDifference(std::string_view text) {
  if (text.starts_with("diff --git a/")) return true;
  Lines lines(text);
  std::string_view line;
  uint32_t met = 0;
  for (uint32_t count = 0; count < kMostLines && lines.Next(&line); ++count) {
    constexpr std::string_view kParts[] = {"--- ", "+++ ", "@@ -9"};
    if (!Matches(line, kParts[met])) {
      met = line.starts_with(kParts[0]) ? 1 : 0;
    } else if (++met == std::size(kParts)) {
      return true;
    }
  }
  return false;
}

// Comments, then the first entry: the text and its translation.
bool IsMessageCatalogue(std::string_view text) {
  Lines lines(text);
  std::string_view line;
  for (uint32_t count = 0; count < kMostLines && lines.Next(&line); ++count) {
    if (line.empty() || line[0] == '#') continue;
    if (!line.starts_with("msgid \"")) return false;
    return text.find("\nmsgstr \"") != std::string_view::npos;
  }
  return false;
}

// An entry of a known kind behind comments.
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

// RIS begins with the type of a reference, the other form with fields of a percent sign each.
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

// The first record: the class of the protein, its date at column 51 and its code at column 63.
bool IsProteinData(std::string_view text) {
  constexpr size_t kDate = 50;
  constexpr size_t kCode = 62;
  Lines lines(text);
  std::string_view line;
  return text.starts_with("HEADER    ") && lines.Next(&line) && line.size() >= kCode + 4 &&
         Matches(line.substr(kDate), "99-") && IsDigit(line[kCode]);
}

// Two lines, each an object.
bool IsJsonLines(std::string_view text) {
  Lines lines(text);
  std::string_view first;
  std::string_view second;
  return lines.Next(&first) && lines.Next(&second) && first.starts_with('{') &&
         second.starts_with('{') && JsonProbe(first, false) != kNoMatch &&
         JsonProbe(second, false) != kNoMatch;
}

bool IsLdif(std::string_view text) {
  Lines lines(text);
  std::string_view line;
  for (uint32_t count = 0; count < kMostLines && lines.Next(&line); ++count) {
    if (line.empty() || line[0] == '#' || line.starts_with("version: 1")) continue;
    return line.starts_with("dn: ") && line.find('=') != std::string_view::npos;
  }
  return false;
}

int HexDigit(char c) {
  if (IsDigit(c)) return c - '0';
  const char lower = ToLower(c);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// Sum of the bytes that the hexadecimal digits stand for, and the first of them; -1 where there is
// another character.
int SumOfBytes(std::string_view digits, int* first) {
  if (digits.empty() || digits.size() % 2 != 0) return -1;
  int sum = 0;
  for (size_t i = 0; i < digits.size(); i += 2) {
    const int high = HexDigit(digits[i]);
    const int low = HexDigit(digits[i + 1]);
    if (high < 0 || low < 0) return -1;
    if (i == 0) *first = high * 16 + low;
    sum += high * 16 + low;
  }
  return sum;
}

// A record of an object file: its length, and a checksum that makes the sum of all bytes 00 (Intel)
// or FF (Motorola).
bool IsObjectRecord(std::string_view line) {
  const bool isIntel = line.starts_with(':');
  if (!isIntel && !Matches(line, "S9")) return false;
  const std::string_view digits = line.substr(isIntel ? 1 : 2);
  // Besides what the length counts: length, address, type and checksum; or the length alone.
  const size_t besides = isIntel ? 5 : 1;
  int length = 0;
  const int sum = SumOfBytes(digits, &length);
  return sum >= 0 && digits.size() / 2 == static_cast<size_t>(length) + besides &&
         (sum & 0xFF) == (isIntel ? 0x00 : 0xFF);
}

bool IsObjectText(std::string_view text) {
  constexpr uint32_t kEnough = 8;
  const size_t lastLine = text.find_last_of("\r\n");
  if (lastLine == std::string_view::npos) return false;
  Lines lines(text.substr(0, lastLine + 1));
  std::string_view line;
  uint32_t count = 0;
  while (count < kEnough && lines.Next(&line)) {
    if (!IsObjectRecord(TrimBlanks(line))) return false;
    ++count;
  }
  return count > 0;
}

bool IsSettings(std::string_view text, std::string_view extension) {
  constexpr std::string_view kExtensions[] = {"INI", "CFG", "CONF", "INF"};
  if (std::find(std::begin(kExtensions), std::end(kExtensions), extension) ==
      std::end(kExtensions)) {
    return false;
  }
  Lines lines(text);
  std::string_view line;
  bool inSection = false;
  for (uint32_t count = 0; count < kMostLines && lines.Next(&line); ++count) {
    line = TrimBlanks(line);
    if (line.empty() || line[0] == ';' || line[0] == '#') continue;
    if (line[0] == '[') {
      if (line.size() < 3 || line.back() != ']') return false;
      inSection = true;
    } else {
      const size_t equals = line.find('=');
      return inSection && equals != std::string_view::npos && equals > 0;
    }
  }
  return false;
}

// Encoded data of a line or none, which the statistics of longer ones pass over.
bool IsShortUuencode(std::string_view text, bool isCut) {
  if (isCut || !Matches(text, "begin 999 ")) return false;
  Lines lines(text);
  std::string_view line;
  std::string_view last;
  while (lines.Next(&line)) {
    if (!line.empty()) last = line;
  }
  return last == "end";
}

}  // namespace

FormatId LineFormatProbe(std::string_view text, bool isCut, std::string_view extension) {
  if (text.empty()) return kNoMatch;
  switch (text[0]) {
    case 'W':
      if (IsWebVtt(text)) return kFormatWebVtt;
      break;
    case 'b':
      if (IsShortUuencode(text, isCut)) return kFormatUuencode;
      break;
    case '{':
      if (IsJsonLines(text)) return kFormatJsonLines;
      break;
    case 'H':
      if (IsProteinData(text)) return kFormatProteinData;
      break;
    case ':':
    case 'S':
      if (IsObjectText(text)) return kFormatIntelHex;
      break;
    default:
      break;
  }
  if (IsSubRip(text)) return kFormatSubRip;
  if (IsBibTex(text)) return kFormatBibTex;
  if (IsReferences(text)) return kFormatReferences;
  if (IsLdif(text)) return kFormatLdif;
  if (IsMessageCatalogue(text)) return kFormatMessageCatalogueSource;
  if (IsDifference(text)) return kFormatDifference;
  return IsSettings(text, extension) ? kFormatSettings : kNoMatch;
}

}  // namespace fi
