#include "probes/text/difference.h"

#include <cstdint>
#include <iterator>

#include "stream/line_pattern.h"
#include "stream/text_view.h"

namespace fi {

bool IsDifference(std::string_view text) {
  if (text.starts_with("diff --git a/")) return true;
  Lines lines(text);
  std::string_view line;
  uint32_t met = 0;
  for (uint32_t count = 0; count < kMostLines && lines.Next(&line); ++count) {
    constexpr std::string_view kParts[] = {"--- ", "+++ ", "@@ -9"};
    if (!BeginsLike(line, kParts[met])) {
      met = line.starts_with(kParts[0]) ? 1 : 0;
    } else if (++met == std::size(kParts)) {
      return true;
    }
  }
  return false;
}

}  // namespace fi
