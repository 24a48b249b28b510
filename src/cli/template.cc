#include "cli/template.h"

#include <cstddef>

namespace fi::app {
namespace {

// The character that a backslash and `c` stand for.
bool Unescape(char c, std::string& text) {
  switch (c) {
    case 'n':
      text += '\n';
      return true;
    case 't':
      text += '\t';
      return true;
    case '0':
      text += '\0';
      return true;
    case '\\':
      text += '\\';
      return true;
    default:
      return false;
  }
}

}  // namespace

bool Template::Parse(std::string_view pattern, std::string& error) {
  pieces_.push_back({{}, nullptr});
  for (size_t i = 0; i < pattern.size(); ++i) {
    const char c = pattern[i];
    const char next = i + 1 < pattern.size() ? pattern[i + 1] : '\0';
    std::string& text = pieces_.back().text;
    if ((c == '{' || c == '}') && next == c) {
      text += c;
      ++i;
    } else if (c == '\\') {
      if (!Unescape(next, text)) {
        error = "--format knows no such escape (\\n, \\t, \\0 and \\\\ are known)";
        return false;
      }
      ++i;
    } else if (c == '}') {
      error = "--format: a single '}' (write '}}' for one)";
      return false;
    } else if (c == '{') {
      const size_t end = pattern.find('}', i);
      if (end == std::string_view::npos) {
        error = "--format: '{' without '}' (write '{{' for one)";
        return false;
      }
      const std::string_view name = pattern.substr(i + 1, end - i - 1);
      pieces_.back().column = FindColumn(name);
      if (pieces_.back().column == nullptr) {
        error = "--format: there is no field '" + std::string(name) + "'";
        return false;
      }
      pieces_.push_back({{}, nullptr});
      i = end;
    } else {
      text += c;
    }
  }
  return true;
}

void Template::Append(const RecordSource& source, std::string& out) const {
  for (const Piece& piece : pieces_) {
    out += piece.text;
    if (piece.column != nullptr) piece.column->append(source, out);
  }
}

std::vector<const Column*> Template::columns() const {
  std::vector<const Column*> columns;
  for (const Piece& piece : pieces_) {
    if (piece.column != nullptr) columns.push_back(piece.column);
  }
  return columns;
}

}  // namespace fi::app
