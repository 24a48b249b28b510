#include "cli/catalogue.h"

#include <strings.h>

#include <algorithm>
#include <charconv>
#include <vector>

#include "cli/columns.h"
#include "run/text/extension.h"
#include "run/text/json.h"

namespace fi::app {
namespace {

void AppendJsonFacts(const FIFormatFacts& facts, std::string& out) {
  out += "{\"id\":" + std::to_string(facts.id) + ",\"name\":";
  AppendJsonString(facts.name, out);
  out += ",\"category\":";
  AppendJsonText(facts.category, out);
  out += ",\"mime\":";
  AppendJsonText(facts.mimeType, out);
  out += ",\"extensions\":";
  AppendJsonList(facts.extensions, out);
  out += ",\"puids\":";
  AppendJsonList(facts.puids, out);
  out += '}';
}

void AppendCsvFacts(const FIFormatFacts& facts, std::string& out) {
  out += std::to_string(facts.id);
  for (const char* field :
       {facts.name, facts.category, facts.mimeType, facts.extensions, facts.puids}) {
    out += ',';
    AppendCsvField(field, out);
  }
  out += "\r\n";
}

// No field holds a tab.
void AppendTextFacts(const FIFormatFacts& facts, std::string& out) {
  out += std::to_string(facts.id);
  for (const char* field : {facts.name, facts.mimeType, facts.extensions}) {
    out += '\t';
    out += field;
  }
  out += '\n';
}

void AppendEntry(const FIFormatFacts& facts, CatalogueLayout layout, bool isFirst,
                 std::string& out) {
  switch (layout) {
    case CatalogueLayout::kText:
      return AppendTextFacts(facts, out);
    case CatalogueLayout::kCsv:
      return AppendCsvFacts(facts, out);
    case CatalogueLayout::kJson:
      out += isFirst ? "[\n" : ",\n";
      return AppendJsonFacts(facts, out);
  }
}

void AppendTextDescription(const FIFormatFacts& facts, std::string& out) {
  out += "id:         " + std::to_string(facts.id) + '\n';
  const struct {
    const char* label;
    const char* text;
  } lines[] = {{"name:       ", facts.name},
               {"category:   ", facts.category},
               {"mime:       ", facts.mimeType},
               {"extensions: ", facts.extensions},
               {"puids:      ", facts.puids}};
  for (const auto& line : lines) {
    if (line.text[0] != '\0') out.append(line.label).append(line.text) += '\n';
  }
}

// True when each word of `words` is in `name`, in either case.
bool HasWords(std::string_view name, std::string_view words) {
  const auto isSame = [](char a, char b) { return (a | 0x20) == (b | 0x20); };
  while (!words.empty()) {
    const size_t end = std::min(words.find(' '), words.size());
    const std::string_view word = words.substr(0, end);
    if (std::search(name.begin(), name.end(), word.begin(), word.end(), isSame) == name.end()) {
      return false;
    }
    words.remove_prefix(std::min(end + 1, words.size()));
  }
  return true;
}

bool IsNumber(const FIFormatFacts& facts, std::string_view what) {
  FormatId id = 0;
  const std::from_chars_result result = std::from_chars(what.data(), what.data() + what.size(), id);
  return result.ec == std::errc() && result.ptr == what.data() + what.size() && facts.id == id;
}
bool HasPuid(const FIFormatFacts& facts, std::string_view what) {
  return ListHas(facts.puids, what);
}
bool HasMimeType(const FIFormatFacts& facts, std::string_view what) {
  const std::string_view type = facts.mimeType;
  return type.size() == what.size() && ::strncasecmp(type.data(), what.data(), what.size()) == 0;
}
bool HasExtension(const FIFormatFacts& facts, std::string_view what) {
  return ListHas(facts.extensions, what.starts_with('.') ? what.substr(1) : what);
}
bool HasName(const FIFormatFacts& facts, std::string_view what) {
  return HasWords(facts.name, what);
}

std::vector<FIFormatFacts> Find(std::string_view what) {
  std::vector<FIFormatFacts> found;
  if (what.empty()) return found;
  const bool isNumber = what.find_first_not_of("0123456789") == std::string_view::npos;
  for (const auto matches : {IsNumber, HasPuid, HasMimeType, HasExtension, HasName}) {
    if (isNumber && matches == HasName) break;  // it is in many names
    ForEachFormat([&](const FIFormatFacts& facts) {
      if (matches(facts, what)) found.push_back(facts);
    });
    if (!found.empty()) break;
  }
  return found;
}

}  // namespace

bool AppendCatalogue(CatalogueLayout layout, std::string_view category, std::string& out) {
  bool isFirst = true;
  ForEachFormat([&](const FIFormatFacts& facts) {
    if (!category.empty() && category != facts.category) return;
    if (isFirst && layout == CatalogueLayout::kCsv)
      out += "id,name,category,mime,extensions,puids\r\n";
    AppendEntry(facts, layout, isFirst, out);
    isFirst = false;
  });
  if (!isFirst && layout == CatalogueLayout::kJson) out += "\n]\n";
  return !isFirst;
}

bool AppendDescription(std::string_view what, CatalogueLayout layout, std::string& out) {
  const std::vector<FIFormatFacts> found = Find(what);
  if (layout == CatalogueLayout::kJson && found.size() == 1) {
    AppendJsonFacts(found[0], out);
    out += '\n';
    return true;
  }
  bool isFirst = true;
  for (const FIFormatFacts& facts : found) {
    if (layout == CatalogueLayout::kJson) {
      AppendEntry(facts, layout, isFirst, out);
    } else {
      if (!isFirst) out += '\n';
      AppendTextDescription(facts, out);
    }
    isFirst = false;
  }
  if (!isFirst && layout == CatalogueLayout::kJson) out += "\n]\n";
  return !isFirst;
}

}  // namespace fi::app
