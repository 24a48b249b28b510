#include "probes/text_formats/xml_element.h"

#include <algorithm>
#include <iterator>

#include "probes/file_bytes.h"
#include "probes/text_view.h"

namespace fi {
namespace {

constexpr size_t kLongestName = 64;
constexpr size_t kTail = 256;  // bytes at the end: the closing tag, and white space behind it

bool IsNameCharacter(char c) {
  return IsLetter(c) || IsDigit(c) || c == '_' || c == '-' || c == '.' || c == ':';
}

std::string_view TrimEnd(std::string_view text) {
  while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
  return text;
}

// Fragments of HTML open and close the same way, but are often no XML.
constexpr std::string_view kHtmlElements[] = {
    "a",     "article",  "b",      "blockquote", "center", "code", "div", "font",
    "form",  "frameset", "h1",     "h2",         "h3",     "h4",   "h5",  "h6",
    "i",     "li",       "main",   "nav",        "ol",     "p",    "pre", "section",
    "small", "span",     "strong", "table",      "tr",     "td",   "ul"};

bool IsHtml(std::string_view name) {
  return std::any_of(std::begin(kHtmlElements), std::end(kHtmlElements),
                     [name](std::string_view html) { return EqualsNoCase(name, html); });
}

// The name of the element whose tag `text` opens with; empty where it opens with none.
std::string_view NameOf(std::string_view text) {
  if (text.size() < 2 || text[0] != '<' || !(IsLetter(text[1]) || text[1] == '_')) return {};
  text.remove_prefix(1);
  const auto* end = std::find_if_not(text.begin(), text.end(), IsNameCharacter);
  const auto size = static_cast<size_t>(end - text.begin());
  if (size == text.size() || size > kLongestName) return {};
  const char next = text[size];
  return IsSpace(next) || next == '>' || next == '/' ? text.substr(0, size) : std::string_view();
}

bool EndsWithTagOf(std::string_view tail, std::string_view name) {
  tail = TrimEnd(tail);
  if (!tail.ends_with('>')) return false;
  tail = TrimEnd(tail.substr(0, tail.size() - 1));
  if (!tail.ends_with(name)) return false;
  tail.remove_suffix(name.size());
  return tail.ends_with("</");
}

}  // namespace

bool IsXmlElement(IdentificationStream* stream, std::string_view text) {
  const std::string_view start = SkipSpace(text);
  const std::string_view name = NameOf(start);
  if (name.empty() || IsHtml(name)) return false;
  const uint64_t size = FileSize(stream);
  const uint64_t offset = size > kTail ? size - kTail : 0;
  const FileBytes<kTail> tail(stream, static_cast<int64_t>(offset));
  return EndsWithTagOf(tail.View(), name);
}

}  // namespace fi
