// JSON Lines: the first two lines are an object each.
#ifndef FI_PROBES_TEXT_JSON_LINES_H_
#define FI_PROBES_TEXT_JSON_LINES_H_

#include <string_view>

namespace fi {

bool IsJsonLines(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_TEXT_JSON_LINES_H_
