#include "probes/text/script.h"

#include "registry/format_ids.h"
#include "stream/text_view.h"

namespace fi {
namespace {

// What kernels read of the line, and more.
constexpr size_t kMaxLine = 255;

}  // namespace

FormatId ScriptProbe(std::string_view text) {
  std::string_view line;
  if (!text.starts_with("#!") || !Lines(text).Next(&line) || line.size() > kMaxLine) {
    return kNoMatch;
  }
  return TrimBlanks(line.substr(2)).starts_with('/') ? kFormatScript : kNoMatch;
}

}  // namespace fi
