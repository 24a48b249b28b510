#include "probes/model/stl_text.h"

#include "registry/format_ids.h"
#include "stream/text_view.h"

namespace fi {
namespace {

constexpr size_t kWindow = 1024;  // holds the name, which is a line, and the first facet

}  // namespace

FormatId StlTextProbe(std::string_view text) {
  text = text.substr(0, kWindow);
  if (!StartsWithNoCase(text, "solid") || text.size() < 6 || !IsWhiteSpace(text[5]))
    return kNoMatch;
  Lines lines(text);
  std::string_view line;
  while (lines.Next(&line)) {
    if (StartsWithNoCase(TrimBlanks(line), "facet normal ")) return kFormatStlText;
  }
  return kNoMatch;
}

}  // namespace fi
