// Text in memory for the probes of text formats: kinds of characters, comparisons without regard to
// case, and lines. Only ASCII counts as text here; what lies above is of no kind.
#ifndef FI_STREAM_TEXT_VIEW_H_
#define FI_STREAM_TEXT_VIEW_H_

#include <cstddef>
#include <string_view>

namespace fi {

inline bool IsBlank(char c) { return c == ' ' || c == '\t'; }
inline bool IsLineEnd(char c) { return c == '\n' || c == '\r'; }
// Blanks, line ends, vertical tab and form feed.
inline bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
inline bool IsDigit(char c) { return c >= '0' && c <= '9'; }
inline bool IsUpper(char c) { return c >= 'A' && c <= 'Z'; }
inline char ToLower(char c) { return IsUpper(c) ? static_cast<char>(c - 'A' + 'a') : c; }
inline bool IsLetter(char c) { return ToLower(c) >= 'a' && ToLower(c) <= 'z'; }
// A character that plain text may hold: printable, a blank, a line end or a form feed.
inline bool IsPlain(char c) { return (c >= ' ' && c <= '~') || IsSpace(c); }

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

inline std::string_view SkipSpace(std::string_view text) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  return text;
}

inline std::string_view TrimBlanks(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
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
