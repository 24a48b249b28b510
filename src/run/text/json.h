// The pieces of JSON (RFC 8259) that the records are put together from.
#ifndef FI_RUN_TEXT_JSON_H_
#define FI_RUN_TEXT_JSON_H_

#include <string>
#include <string_view>

namespace fi::app {

// Appends `text` as a JSON string. Bytes that are not UTF-8 become U+FFFD, one each; control
// characters and characters that deceive (IsDeceptive) are escaped, so that a terminal may show the
// result.
void AppendJsonString(std::string_view text, std::string& out);

// The same, with null for an empty text.
void AppendJsonText(std::string_view text, std::string& out);

// Appends a list of texts separated by commas as an array of strings; an empty list is [].
void AppendJsonList(std::string_view list, std::string& out);

}  // namespace fi::app

#endif  // FI_RUN_TEXT_JSON_H_
