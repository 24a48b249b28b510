// Codes of probes that never match; probe_table.cc has the reasons beside their rows. A row of
// nothing but such a code neither reads nor moves the stream, so the walk leaves it out.
#ifndef FI_TABLES_UNANSWERED_PROBES_H_
#define FI_TABLES_UNANSWERED_PROBES_H_

#include <algorithm>
#include <cstdint>

namespace fi {

inline constexpr uint16_t kUnansweredProbes[] = {
    1003, 1007, 1018, 1020, 1025, 1034, 1041, 1201, 1206, 1210, 1212,
    1213, 1515, 1528, 1569, 1570, 1588, 1807, 2233, 6201, 6202, 6203,
};

constexpr bool IsUnanswered(uint16_t code) {
  return std::ranges::binary_search(kUnansweredProbes, code);
}

}  // namespace fi

#endif  // FI_TABLES_UNANSWERED_PROBES_H_
