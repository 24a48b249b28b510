#ifndef FI_CLI_USAGE_H_
#define FI_CLI_USAGE_H_

#include <string>
#include <string_view>

namespace fi::app {

inline constexpr std::string_view kShortUsage = "Usage: formatid [OPTION]... [--] PATH|-...\n";
inline constexpr std::string_view kHelpHint = "Try 'formatid --help'.\n";

// Each is made from the table of options.
std::string HelpText();    // the answer to --help, in 80 columns
std::string ManualPage();  // man(7)
std::string BashCompletion();
std::string ZshCompletion();
std::string FishCompletion();

}  // namespace fi::app

#endif  // FI_CLI_USAGE_H_
