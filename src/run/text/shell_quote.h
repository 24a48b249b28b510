// Words for a shell.
#ifndef FI_RUN_TEXT_SHELL_QUOTE_H_
#define FI_RUN_TEXT_SHELL_QUOTE_H_

#include <string>
#include <string_view>

namespace fi::app {

// Appends `word` as a single word of a shell with exactly these bytes: in single quotes, or as
// $'...' (POSIX.1-2024) if characters in it control a terminal or deceive.
void AppendShellWord(std::string_view word, std::string& out);

}  // namespace fi::app

#endif  // FI_RUN_TEXT_SHELL_QUOTE_H_
