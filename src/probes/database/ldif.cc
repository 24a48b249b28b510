#include "probes/database/ldif.h"

#include <cstdint>

#include "stream/line_pattern.h"
#include "stream/text_view.h"

namespace fi {

bool IsLdif(std::string_view text) {
  Lines lines(text);
  std::string_view line;
  for (uint32_t count = 0; count < kMostLines && lines.Next(&line); ++count) {
    if (line.empty() || line[0] == '#' || line.starts_with("version: 1")) continue;
    return line.starts_with("dn: ") && line.find('=') != std::string_view::npos;
  }
  return false;
}

}  // namespace fi
