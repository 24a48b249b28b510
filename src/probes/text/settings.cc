#include "probes/text/settings.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "stream/line_pattern.h"
#include "stream/text_view.h"

namespace fi {

bool IsSettings(std::string_view text, std::string_view extension) {
  constexpr std::string_view kExtensions[] = {"INI", "CFG", "CONF", "INF"};
  if (std::find(std::begin(kExtensions), std::end(kExtensions), extension) ==
      std::end(kExtensions)) {
    return false;
  }
  Lines lines(text);
  std::string_view line;
  bool inSection = false;
  for (uint32_t count = 0; count < kMostLines && lines.Next(&line); ++count) {
    line = TrimBlanks(line);
    if (line.empty() || line[0] == ';' || line[0] == '#') continue;
    if (line[0] == '[') {
      if (line.size() < 3 || line.back() != ']') return false;
      inSection = true;
    } else {
      const size_t equals = line.find('=');
      return inSection && equals != std::string_view::npos && equals > 0;
    }
  }
  return false;
}

}  // namespace fi
