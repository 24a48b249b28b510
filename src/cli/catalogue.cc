#include "cli/catalogue.h"

#include <cstdint>
#include <string_view>

#include "formatid/platform.h"
#include "run/json.h"

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

}  // namespace

void AppendCsvField(std::string_view text, std::string& out) {
  if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
    out += text;
    return;
  }
  out += '"';
  for (const char c : text) {
    if (c == '"') out += '"';
    out += c;
  }
  out += '"';
}

void AppendCatalogue(CatalogueLayout layout, std::string& out) {
  if (layout == CatalogueLayout::kCsv) out += "id,name,category,mime,extensions,puids\r\n";
  bool isFirst = true;
  uint16_t cursor = 0;
  FormatId id = 0;
  for (uint16_t more = FIGetFirstId(&cursor, &id, nullptr, 0); more != 0;
       more = FIGetNextId(&cursor, &id, nullptr, 0)) {
    FIFormatFacts facts;
    if (UTGetFormatFacts(id, &facts) != 0) continue;
    AppendEntry(facts, layout, isFirst, out);
    isFirst = false;
  }
  if (layout == CatalogueLayout::kJson) out += isFirst ? "[]\n" : "\n]\n";
}

bool AppendDescription(FormatId id, CatalogueLayout layout, std::string& out) {
  FIFormatFacts facts;
  if (UTGetFormatFacts(id, &facts) != 0) return false;
  if (layout == CatalogueLayout::kJson) {
    AppendJsonFacts(facts, out);
    out += '\n';
    return true;
  }
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
  return true;
}

}  // namespace fi::app
