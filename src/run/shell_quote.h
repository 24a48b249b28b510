// Words for a shell.
#ifndef FI_RUN_SHELL_QUOTE_H_
#define FI_RUN_SHELL_QUOTE_H_

#include <string>
#include <string_view>

namespace fi::app {

// Appends `word` so that a shell takes it as one word with exactly these bytes: in single quotes,
// or as $'...' (POSIX.1-2024) where it holds characters that a terminal obeys or that deceive.
void AppendShellWord(std::string_view word, std::string& out);

}  // namespace fi::app

#endif  // FI_RUN_SHELL_QUOTE_H_
