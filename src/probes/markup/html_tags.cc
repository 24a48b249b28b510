#include "probes/markup/html_tags.h"

#include <algorithm>
#include <array>
#include <bit>
#include <iterator>

#include "stream/text_view.h"

namespace fi {
namespace {

constexpr uint32_t kWindow = 1024;  // characters looked at
constexpr int kEnoughTags = 2;
constexpr size_t kMaxName = 10;

// One tag of these says enough, or two different ones of those behind the first.
constexpr std::string_view kTypical[] = {"html",   "head",  "body",  "title",   "meta",
                                         "script", "style", "table", "frameset"};

// Elements that HTML fragments begin with; those of other vocabularies are left out.
constexpr std::string_view kFirst[] = {
    "html", "head", "body", "title",  "meta", "script", "style", "table", "frameset", "a",
    "b",    "base", "br",   "center", "div",  "font",   "form",  "h1",    "h2",       "h3",
    "h4",   "hr",   "i",    "img",    "link", "ol",     "p",     "pre",   "span",     "ul"};

// Reads the name of a tag whose "<" was read. Empty when no name of use stands there.
std::string_view ReadName(MarkupReader& reader, std::array<char, kMaxName>& name) {
  size_t size = 0;
  uint32_t c = reader.Next();
  for (; c < 0x80 && IsLetter(static_cast<char>(c)); c = reader.Next()) {
    if (size == name.size()) return {};
    name[size++] = ToLower(static_cast<char>(c));
  }
  if (c == kEndOfData) return {};
  reader.PutBack();
  return IsMarkupSpace(c) || c == '>' || c == '/' ? std::string_view(name.data(), size)
                                                  : std::string_view();
}

// Passes a comment whose "<!" was read, and nothing else.
bool SkipComment(MarkupReader& reader) {
  for (int i = 0; i < 2; ++i) {
    const uint32_t c = reader.Next();
    if (c == kEndOfData) return false;
    if (c == '-') continue;
    reader.PutBack();
    return true;
  }
  return reader.SkipPast("-->");
}

}  // namespace

bool BeginsHtml(std::string_view name) {
  return std::any_of(std::begin(kFirst), std::end(kFirst),
                     [name](std::string_view first) { return EqualsNoCase(name, first); });
}

bool HasHtmlTags(IdentificationStream* stream, const TextForm& form) {
  MarkupReader reader(stream, form, kWindow);
  uint32_t seen = 0;
  bool whole = false;
  for (uint32_t c = reader.Next(); c != kEndOfData; c = reader.Next()) {
    if (c != '<') continue;
    c = reader.Next();
    if (c == '!' && !SkipComment(reader)) break;
    if (c == kEndOfData) break;
    if (c == '!') continue;
    reader.PutBack();
    std::array<char, kMaxName> buffer;
    const std::string_view name = ReadName(reader, buffer);
    const auto* found = std::find(std::begin(kTypical), std::end(kTypical), name);
    if (found == std::begin(kTypical)) whole = true;
    if (found != std::end(kTypical)) seen |= 1u << (found - std::begin(kTypical));
  }
  return !reader.MetNul() && (whole || std::popcount(seen) >= kEnoughTags);
}

bool IsHtmlFragment(std::string_view text, std::string_view extension) {
  if (extension != "HTM" && extension != "HTML") return false;
  text = SkipSpace(text);
  if (!text.starts_with('<')) return false;
  text.remove_prefix(1);
  const size_t end = text.find_first_of(" \t\r\n/>");
  return end != std::string_view::npos && BeginsHtml(text.substr(0, end));
}

}  // namespace fi
