// Uuencoded data of a line or none, which the statistics of longer ones pass over. `isCut` tells
// that the file is longer than `text`.
#ifndef FI_PROBES_ENCODED_SHORT_UUENCODE_H_
#define FI_PROBES_ENCODED_SHORT_UUENCODE_H_

#include <string_view>

namespace fi {

bool IsShortUuencode(std::string_view text, bool isCut);

}  // namespace fi

#endif  // FI_PROBES_ENCODED_SHORT_UUENCODE_H_
