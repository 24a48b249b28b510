#ifndef FI_CLI_USAGE_H_
#define FI_CLI_USAGE_H_

#include <string_view>

namespace fi::app {

inline constexpr std::string_view kShortUsage = "Usage: formatid [OPTION]... [--] PATH|-...\n";
inline constexpr std::string_view kHelpHint = "Try 'formatid --help'.\n";

// The answer to --help.
extern const std::string_view kHelp;

}  // namespace fi::app

#endif  // FI_CLI_USAGE_H_
