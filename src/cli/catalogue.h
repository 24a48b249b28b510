// What the command tells about the formats themselves.
#ifndef FI_CLI_CATALOGUE_H_
#define FI_CLI_CATALOGUE_H_

#include <string>

#include "formatid/formatid.h"

namespace fi::app {

enum class CatalogueLayout { kText, kJson, kCsv };

// Appends every format that has a name, in rising order of its identifier.
void AppendCatalogue(CatalogueLayout layout, std::string& out);

// Appends what is known about one format. False, with nothing appended, when it has no name. There
// is no CSV form.
bool AppendDescription(FormatId id, CatalogueLayout layout, std::string& out);

// Appends a field of a CSV record (RFC 4180).
void AppendCsvField(std::string_view text, std::string& out);

}  // namespace fi::app

#endif  // FI_CLI_CATALOGUE_H_
