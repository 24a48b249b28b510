// Text in memory for the probes of text formats: kinds of characters, comparisons without regard to
// case, and lines. Only ASCII counts as text here; what lies above is of no kind.
#ifndef FI_STREAM_TEXT_VIEW_H_
#define FI_STREAM_TEXT_VIEW_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace fi {

inline bool IsSpaceOrTab(char c) { return c == ' ' || c == '\t'; }
inline bool IsLineEnd(char c) { return c == '\n' || c == '\r'; }
// Space, tab, line ends, vertical tab and form feed.
inline bool IsWhiteSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
// The same for what a stream's read gives; the end of the data is none.
inline bool IsWhiteSpaceByte(uint32_t byte) {
  return byte <= 0x7F && IsWhiteSpace(static_cast<char>(byte));
}
inline bool IsDigit(char c) { return c >= '0' && c <= '9'; }
inline bool IsUpper(char c) { return c >= 'A' && c <= 'Z'; }
inline char ToLower(char c) { return IsUpper(c) ? static_cast<char>(c - 'A' + 'a') : c; }
inline bool IsLetter(char c) { return ToLower(c) >= 'a' && ToLower(c) <= 'z'; }
inline bool IsHexDigit(char c) { return IsDigit(c) || (ToLower(c) >= 'a' && ToLower(c) <= 'f'); }
// A character that plain text may hold: printable or white space.
inline bool IsPlain(char c) { return (c >= ' ' && c <= '~') || IsWhiteSpace(c); }

// Whether `text` begins with `lower`, which is in lower case, in any case.
inline bool StartsWithNoCase(std::string_view text, std::string_view lower) {
  if (text.size() < lower.size()) return false;
  for (size_t i = 0; i < lower.size(); ++i) {
    if (ToLower(text[i]) != lower[i]) return false;
  }
  return true;
}

inline bool EqualsNoCase(std::string_view text, std::string_view lower) {
  return text.size() == lower.size() && StartsWithNoCase(text, lower);
}

// Whether `part` stands somewhere in `text`, in the same case.
inline bool ContainsText(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

// `text` without the white space at its start.
inline std::string_view SkipSpace(std::string_view text) {
  while (!text.empty() && IsWhiteSpace(text.front())) text.remove_prefix(1);
  return text;
}

// `text` without the spaces and tabs at its ends.
inline std::string_view TrimBlanks(std::string_view text) {
  while (!text.empty() && IsSpaceOrTab(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsSpaceOrTab(text.back())) text.remove_suffix(1);
  return text;
}

// Lines that end in LF, CR, CR LF or with the text.
class Lines {
 public:
  explicit Lines(std::string_view text) : rest_(text) {}

  // The next line, without its end. False when there is none.
  bool Next(std::string_view* line) {
    if (rest_.empty()) return false;
    size_t end = 0;
    while (end < rest_.size() && !IsLineEnd(rest_[end])) ++end;
    *line = rest_.substr(0, end);
    rest_.remove_prefix(end);
    if (rest_.starts_with("\r\n")) rest_.remove_prefix(1);
    if (!rest_.empty()) rest_.remove_prefix(1);
    return true;
  }

  // What follows the last line.
  std::string_view Rest() const { return rest_; }

 private:
  std::string_view rest_;
};

}  // namespace fi

#endif  // FI_STREAM_TEXT_VIEW_H_
