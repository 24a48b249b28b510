// What the command tells about the formats themselves.
#ifndef FI_CLI_CATALOGUE_H_
#define FI_CLI_CATALOGUE_H_

#include <string>
#include <string_view>

#include "formatid/platform.h"

namespace fi::app {

enum class CatalogueLayout { kText, kJson, kCsv };

// Calls `body(const FIFormatFacts&)` for every format that has a name, in rising order.
template <class Body>
void ForEachFormat(Body&& body) {
  uint16_t cursor = 0;
  FormatId id = 0;
  for (uint16_t more = FIGetFirstId(&cursor, &id, nullptr, 0); more != 0;
       more = FIGetNextId(&cursor, &id, nullptr, 0)) {
    FIFormatFacts facts;
    if (UTGetFormatFacts(id, &facts) == 0) body(facts);
  }
}

// Appends the formats with a name; with a category that is not empty, only the formats of that
// category. False, with nothing appended, when there is none.
bool AppendCatalogue(CatalogueLayout layout, std::string_view category, std::string& out);

// Appends the facts about the formats that `what` names: a number, a PRONOM identifier, a MIME
// type, an extension or words of a name, tried in this order. False, with nothing appended, when
// there is none. There is no CSV form; JSON is one object for one format, an array for more.
bool AppendDescription(std::string_view what, CatalogueLayout layout, std::string& out);

}  // namespace fi::app

#endif  // FI_CLI_CATALOGUE_H_
