#include "run/text/escape.h"

#include <algorithm>
#include <cstdint>

#include "run/text/utf8.h"

namespace fi::app {
namespace {

constexpr char kDigits[] = "0123456789abcdef";

void AppendByte(char c, std::string& out) {
  if (AppendNamedEscape(c, out)) return;
  const auto byte = static_cast<uint8_t>(c);
  out += "\\x";
  out += kDigits[byte >> 4];
  out += kDigits[byte & 15];
}

// How many bytes at the start of `name` are printable ASCII other than a backslash.
size_t PlainLength(std::string_view name) {
  const auto* end = std::find_if(name.begin(), name.end(),
                                 [](char c) { return c < 0x20 || c >= 0x7F || c == '\\'; });
  return static_cast<size_t>(end - name.begin());
}

}  // namespace

bool AppendNamedEscape(char c, std::string& out) {
  switch (c) {
    case '\n':
      out += "\\n";
      return true;
    case '\r':
      out += "\\r";
      return true;
    case '\t':
      out += "\\t";
      return true;
    default:
      return false;
  }
}

void AppendEscaped(std::string_view name, std::string& out) {
  while (!name.empty()) {
    if (const size_t plain = PlainLength(name); plain != 0) {
      out += name.substr(0, plain);
      name.remove_prefix(plain);
      continue;
    }
    const size_t length = Utf8SequenceLength(name);
    const std::string_view sequence = name.substr(0, std::max<size_t>(length, 1));
    if (length == 0 || IsControl(sequence) || IsDeceptive(sequence)) {
      for (const char c : sequence) AppendByte(c, out);
    } else if (sequence == "\\") {
      out += "\\\\";
    } else {
      out += sequence;
    }
    name.remove_prefix(sequence.size());
  }
}

size_t EscapedWidth(std::string_view escaped) {
  const auto columns = std::count_if(escaped.begin(), escaped.end(), [](char c) {
    return (static_cast<uint8_t>(c) & 0xC0) != 0x80;  // not a continuation byte
  });
  return static_cast<size_t>(columns);
}

}  // namespace fi::app
