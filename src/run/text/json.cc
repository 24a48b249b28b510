#include "run/text/json.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "run/text/escape.h"
#include "run/text/utf8.h"

namespace fi::app {
namespace {

constexpr char kDigits[] = "0123456789abcdef";
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

void AppendUnit(uint32_t unit, std::string& out) {
  out += "\\u";
  for (int shift = 12; shift >= 0; shift -= 4) out += kDigits[unit >> shift & 15];
}

// Beyond U+FFFF as two surrogates.
void AppendCode(std::string_view sequence, std::string& out) {
  if (sequence.size() == 1 && AppendNamedEscape(sequence[0], out)) return;
  const uint32_t point = CodePoint(sequence);
  if (point < 0x10000) return AppendUnit(point, out);
  AppendUnit(0xD800 + ((point - 0x10000) >> 10), out);
  AppendUnit(0xDC00 + ((point - 0x10000) & 0x3FF), out);
}

// How many bytes at the start of `text` are printable ASCII that JSON takes as it is.
size_t PlainLength(std::string_view text) {
  const auto* end = std::find_if(text.begin(), text.end(), [](char c) {
    return c < 0x20 || c >= 0x7F || c == '"' || c == '\\';
  });
  return static_cast<size_t>(end - text.begin());
}

}  // namespace

void AppendJsonString(std::string_view text, std::string& out) {
  out += '"';
  while (!text.empty()) {
    if (const size_t plain = PlainLength(text); plain != 0) {
      out += text.substr(0, plain);
      text.remove_prefix(plain);
      continue;
    }
    const size_t length = Utf8SequenceLength(text);
    const std::string_view sequence = text.substr(0, std::max<size_t>(length, 1));
    if (length == 0) {
      out += kReplacement;
    } else if (IsControl(sequence) || IsDeceptive(sequence)) {
      AppendCode(sequence, out);
    } else {
      if (sequence == "\"" || sequence == "\\") out += '\\';
      out += sequence;
    }
    text.remove_prefix(sequence.size());
  }
  out += '"';
}

void AppendJsonText(std::string_view text, std::string& out) {
  if (text.empty()) {
    out += "null";
  } else {
    AppendJsonString(text, out);
  }
}

void AppendJsonList(std::string_view list, std::string& out) {
  out += '[';
  while (!list.empty()) {
    const size_t length = std::min(list.find(','), list.size());
    AppendJsonString(list.substr(0, length), out);
    list.remove_prefix(std::min(length + 1, list.size()));
    if (!list.empty()) out += ',';
  }
  out += ']';
}

}  // namespace fi::app
