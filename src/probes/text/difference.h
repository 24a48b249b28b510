// Differences between files, unified: the old file, the new file and the first hunk on three lines,
// whatever stands before them; or the first line that Git writes.
#ifndef FI_PROBES_TEXT_DIFFERENCE_H_
#define FI_PROBES_TEXT_DIFFERENCE_H_

#include <string_view>

namespace fi {

bool IsDifference(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_TEXT_DIFFERENCE_H_
