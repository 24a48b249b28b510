#include "run/json.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "run/escape.h"
#include "run/utf8.h"

namespace fi::app {
namespace {

constexpr char kDigits[] = "0123456789abcdef";
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

// `sequence` is a control character, whose last byte is its code point below U+00A0.
void AppendControl(std::string_view sequence, std::string& out) {
  const auto point = static_cast<uint8_t>(sequence.back());
  if (AppendNamedEscape(sequence.back(), out)) return;
  out += "\\u00";
  out += kDigits[point >> 4];
  out += kDigits[point & 15];
}

}  // namespace

void AppendJsonString(std::string_view text, std::string& out) {
  out += '"';
  while (!text.empty()) {
    const size_t length = Utf8SequenceLength(text);
    const std::string_view sequence = text.substr(0, std::max<size_t>(length, 1));
    if (length == 0) {
      out += kReplacement;
    } else if (IsControl(sequence)) {
      AppendControl(sequence, out);
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
