#include "run/text/shell_quote.h"

#include <algorithm>
#include <cstdint>

#include "run/text/utf8.h"

namespace fi::app {
namespace {

bool IsShown(std::string_view sequence) {
  return !sequence.empty() && !IsControl(sequence) && !IsDeceptive(sequence);
}

bool IsAllShown(std::string_view word) {
  while (!word.empty()) {
    const std::string_view sequence = word.substr(0, Utf8SequenceLength(word));
    if (!IsShown(sequence)) return false;
    word.remove_prefix(sequence.size());
  }
  return true;
}

// Three octal digits never run into what follows.
void AppendOctal(char c, std::string& out) {
  const auto byte = static_cast<uint8_t>(c);
  out += '\\';
  for (const int shift : {6, 3, 0}) out += static_cast<char>('0' + (byte >> shift & 7));
}

}  // namespace

void AppendShellWord(std::string_view word, std::string& out) {
  if (IsAllShown(word)) {
    out += '\'';
    for (const char c : word) {
      if (c == '\'') {
        out += "'\\''";
      } else {
        out += c;
      }
    }
    out += '\'';
    return;
  }
  out += "$'";
  while (!word.empty()) {
    const std::string_view sequence = word.substr(0, std::max<size_t>(Utf8SequenceLength(word), 1));
    const bool isWhole = Utf8SequenceLength(word) != 0;
    if (!isWhole || !IsShown(sequence) || sequence == "'" || sequence == "\\") {
      for (const char c : sequence) AppendOctal(c, out);
    } else {
      out += sequence;
    }
    word.remove_prefix(sequence.size());
  }
  out += '\'';
}

}  // namespace fi::app
