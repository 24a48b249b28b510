#include "probes/text/json_lines.h"

#include "probes/text/json.h"
#include "registry/format_ids.h"
#include "stream/text_view.h"

namespace fi {

bool IsJsonLines(std::string_view text) {
  Lines lines(text);
  std::string_view first;
  std::string_view second;
  return lines.Next(&first) && lines.Next(&second) && first.starts_with('{') &&
         second.starts_with('{') && JsonProbe(first, false) != kNoMatch &&
         JsonProbe(second, false) != kNoMatch;
}

}  // namespace fi
