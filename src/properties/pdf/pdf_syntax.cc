#include "properties/pdf/pdf_syntax.h"

#include <limits>

namespace fi::pdf {
namespace {

// Arrays and dictionaries inside each other. Deeper nesting serves no known writer.
constexpr uint32_t kMaxDepth = 64;

bool IsPdfSpace(char c) {
  return c == ' ' || c == '\n' || c == '\r' || c == '\t' || c == '\f' || c == '\0';
}

bool IsDelimiter(char c) {
  return std::string_view("()<>[]{}/%").find(c) != std::string_view::npos;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

int HexValue(char c) {
  if (IsDigit(c)) return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

// Length of a literal string with its parentheses; 0 when it is cut off.
size_t LiteralLength(std::string_view text) {
  size_t depth = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\') {
      ++i;
    } else if (text[i] == '(') {
      ++depth;
    } else if (text[i] == ')' && --depth == 0) {
      return i + 1;
    }
  }
  return 0;
}

// Length of a name, number or word.
size_t RegularLength(std::string_view text) {
  size_t length = text.starts_with('/') ? 1 : 0;
  while (length < text.size() && !IsPdfSpace(text[length]) && !IsDelimiter(text[length])) ++length;
  return length;
}

// Length of the next token: a bracket, a string, a name, a number or a word. 0: none, or cut off.
size_t TokenLength(std::string_view text) {
  if (text.empty()) return 0;
  if (text.starts_with("<<") || text.starts_with(">>")) return 2;
  switch (text[0]) {
    case '(':
      return LiteralLength(text);
    case '<': {
      const size_t end = text.find('>');
      return end == std::string_view::npos ? 0 : end + 1;
    }
    case '[':
    case ']':
    case '{':
    case '}':
      return 1;
    case ')':
    case '>':
      return 0;
    default:
      return RegularLength(text);
  }
}

// Length of an array or dictionary; 0 when it is cut off.
size_t NestedLength(std::string_view text) {
  uint32_t depth = 0;
  std::string_view rest = text;
  for (;;) {
    rest = SkipSpace(rest);
    const size_t length = TokenLength(rest);
    if (length == 0) return 0;
    const std::string_view token = rest.substr(0, length);
    rest.remove_prefix(length);
    if (token == "<<" || token == "[") {
      if (++depth > kMaxDepth) return 0;
    } else if (token == ">>" || token == "]") {
      if (--depth == 0) return text.size() - rest.size();
    }
  }
}

// Length of "12 0 R"; 0 for anything else.
size_t ReferenceLength(std::string_view text) {
  std::string_view rest = text;
  for (int part = 0; part < 2; ++part) {
    size_t digits = 0;
    while (digits < rest.size() && IsDigit(rest[digits])) ++digits;
    if (digits == 0) return 0;
    rest = SkipSpace(rest.substr(digits));
  }
  if (!rest.starts_with('R') || RegularLength(rest) != 1) return 0;
  return text.size() - rest.size() + 1;
}

// The character of an escape sequence; `*i` moves from the byte behind the backslash to the last
// byte of the sequence. -1 for an escaped line end, which is no character.
int Unescape(std::string_view text, size_t* i) {
  const char c = text[*i];
  if (c >= '0' && c <= '7') {
    int value = 0;
    size_t digits = 0;
    while (digits < 3 && *i + digits < text.size() && text[*i + digits] >= '0' &&
           text[*i + digits] <= '7') {
      value = value * 8 + (text[*i + digits++] - '0');
    }
    *i += digits - 1;
    return value & 0xFF;
  }
  switch (c) {
    case 'n':
      return '\n';
    case 'r':
      return '\r';
    case 't':
      return '\t';
    case 'b':
      return '\b';
    case 'f':
      return '\f';
    case '\r':
      if (*i + 1 < text.size() && text[*i + 1] == '\n') ++*i;
      return -1;
    case '\n':
      return -1;
    default:
      return static_cast<unsigned char>(c);
  }
}

size_t DecodeLiteral(std::string_view text, std::span<uint8_t> out) {
  size_t stored = 0;
  for (size_t i = 0; i < text.size() && stored < out.size(); ++i) {
    int value = static_cast<unsigned char>(text[i]);
    if (text[i] == '\\' && i + 1 < text.size()) {
      ++i;
      value = Unescape(text, &i);
    }
    if (value >= 0) out[stored++] = static_cast<uint8_t>(value);
  }
  return stored;
}

size_t DecodeHexadecimal(std::string_view text, std::span<uint8_t> out) {
  size_t stored = 0;
  int high = -1;
  for (const char c : text) {
    const int digit = HexValue(c);
    if (digit < 0) continue;
    if (high < 0) {
      high = digit;
      continue;
    }
    if (stored == out.size()) return stored;
    out[stored++] = static_cast<uint8_t>(high * 16 + digit);
    high = -1;
  }
  if (high >= 0 && stored < out.size()) out[stored++] = static_cast<uint8_t>(high * 16);
  return stored;
}

}  // namespace

std::string_view SkipSpace(std::string_view text) {
  while (!text.empty()) {
    if (IsPdfSpace(text[0])) {
      text.remove_prefix(1);
    } else if (text[0] == '%') {
      const size_t end = text.find_first_of("\r\n");
      text.remove_prefix(end == std::string_view::npos ? text.size() : end);
    } else {
      break;
    }
  }
  return text;
}

std::string_view Value(std::string_view text) {
  text = SkipSpace(text);
  if (text.starts_with("<<") || text.starts_with('[')) return text.substr(0, NestedLength(text));
  if (const size_t length = ReferenceLength(text); length > 0) return text.substr(0, length);
  return text.substr(0, TokenLength(text));
}

std::string_view Entry(std::string_view text, std::string_view key) {
  text = SkipSpace(text);
  if (!text.starts_with("<<")) return {};
  text.remove_prefix(2);
  for (;;) {
    text = SkipSpace(text);
    if (!text.starts_with('/')) return {};
    const size_t length = RegularLength(text);
    const std::string_view name = text.substr(1, length - 1);
    text.remove_prefix(length);
    const std::string_view value = Value(text);
    if (value.empty()) return {};
    if (name == key) return value;
    text.remove_prefix(static_cast<size_t>(value.data() - text.data()) + value.size());
  }
}

std::optional<int64_t> Integer(std::string_view text) {
  text = SkipSpace(text);
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  if (text.empty() || !IsDigit(text[0])) return std::nullopt;
  constexpr int64_t kMost = std::numeric_limits<int64_t>::max() / 10 - 1;
  int64_t value = 0;
  for (const char c : text) {
    if (!IsDigit(c)) break;
    if (value > kMost) return std::nullopt;
    value = value * 10 + (c - '0');
  }
  return isNegative ? -value : value;
}

std::optional<uint32_t> Reference(std::string_view text) {
  text = SkipSpace(text);
  if (ReferenceLength(text) == 0) return std::nullopt;
  const std::optional<int64_t> number = Integer(text);
  if (!number.has_value() || *number > std::numeric_limits<uint32_t>::max()) return std::nullopt;
  return static_cast<uint32_t>(*number);
}

std::string_view Element(std::string_view array, size_t index) {
  array = SkipSpace(array);
  if (!array.starts_with('[')) return {};
  array.remove_prefix(1);
  for (;; --index) {
    const std::string_view value = Value(array);
    if (value.empty() || index == 0) return value == "]" ? std::string_view() : value;
    if (value == "]") return {};
    array.remove_prefix(static_cast<size_t>(value.data() - array.data()) + value.size());
  }
}

size_t DecodeString(std::string_view text, std::span<uint8_t> out) {
  text = Value(text);
  if (text.size() < 2) return 0;
  const std::string_view inside = text.substr(1, text.size() - 2);
  if (text[0] == '(') return DecodeLiteral(inside, out);
  return text[0] == '<' ? DecodeHexadecimal(inside, out) : 0;
}

}  // namespace fi::pdf
