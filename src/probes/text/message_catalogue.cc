#include "probes/text/message_catalogue.h"

#include <cstdint>

#include "stream/line_pattern.h"
#include "stream/text_view.h"

namespace fi {

bool IsMessageCatalogue(std::string_view text) {
  Lines lines(text);
  std::string_view line;
  for (uint32_t count = 0; count < kMostLines && lines.Next(&line); ++count) {
    if (line.empty() || line[0] == '#') continue;
    if (!line.starts_with("msgid \"")) return false;
    return text.find("\nmsgstr \"") != std::string_view::npos;
  }
  return false;
}

}  // namespace fi
