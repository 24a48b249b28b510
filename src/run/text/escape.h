// File names as text output shows them: one line, nothing that a terminal obeys, and reversible.
#ifndef FI_RUN_TEXT_ESCAPE_H_
#define FI_RUN_TEXT_ESCAPE_H_

#include <cstddef>
#include <string>
#include <string_view>

namespace fi::app {

// Appends `name` with control characters, characters that deceive (IsDeceptive) and bytes that are
// not UTF-8 escaped: \n, \r and \t, any other as \xNN per byte. A backslash is doubled, so that no
// two names read the same.
void AppendEscaped(std::string_view name, std::string& out);

// Columns that an escaped name takes, at one column per code point.
size_t EscapedWidth(std::string_view escaped);

// Appends the escape that has a letter of its own, in text and JSON alike: \n, \r or \t. False for
// every other character.
bool AppendNamedEscape(char c, std::string& out);

}  // namespace fi::app

#endif  // FI_RUN_TEXT_ESCAPE_H_
