#include "probes/encoded/short_uuencode.h"

#include "stream/line_pattern.h"
#include "stream/text_view.h"

namespace fi {

bool IsShortUuencode(std::string_view text, bool isCut) {
  if (isCut || !BeginsLike(text, "begin 999 ")) return false;
  Lines lines(text);
  std::string_view line;
  std::string_view last;
  while (lines.Next(&line)) {
    if (!line.empty()) last = line;
  }
  return last == "end";
}

}  // namespace fi
