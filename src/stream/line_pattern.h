// What the probes of formats by lines share.
#ifndef FI_STREAM_LINE_PATTERN_H_
#define FI_STREAM_LINE_PATTERN_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "stream/text_view.h"

namespace fi {

// How many lines a probe looks through for the first that counts, behind comments and the like.
inline constexpr uint32_t kMostLines = 32;

// Whether `line` begins as the pattern says: "9" is any digit, all else itself.
inline bool BeginsLike(std::string_view line, std::string_view pattern) {
  if (line.size() < pattern.size()) return false;
  for (size_t i = 0; i < pattern.size(); ++i) {
    if (pattern[i] == '9' ? !IsDigit(line[i]) : line[i] != pattern[i]) return false;
  }
  return true;
}

}  // namespace fi

#endif  // FI_STREAM_LINE_PATTERN_H_
