// Text whose lines have the same number of commas or tabs though it is no table: configuration and
// source code.
#ifndef FI_PROBES_TEXT_TABLELESS_H_
#define FI_PROBES_TEXT_TABLELESS_H_

#include <string_view>

namespace fi {

// Whether the head of the text shows that it is one of these: a directive of the C preprocessor, a
// table of hosts, a table of file systems.
bool IsNoTable(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_TEXT_TABLELESS_H_
