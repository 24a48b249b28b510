#include "probes/print/pjl_pcl.h"

#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr std::string_view kExit = "\x1B%-12345X";
constexpr std::string_view kReset =
    "\x1B"
    "E\x1B";

}  // namespace

FormatId PclProbe(IdentificationStream* stream) {
  constexpr size_t kHead = 16;
  const FileBytes<kHead> head(stream, 0);
  const size_t reset = head.View().find(kReset);
  if (head.Byte(0) != kReset[0] || reset == std::string_view::npos) return kNoMatch;
  switch (head.Byte(reset + kReset.size())) {
    case '%':
    case '&':
    case '*':
    case '(':
      return kFormatPcl;
    default:
      return kNoMatch;
  }
}

FormatId PjlProbe(IdentificationStream* stream) {
  const FileBytes<16> head(stream, 0);
  return head.Holds(0, kExit) && head.Holds(kExit.size(), "@PJL") ? kFormatPjlJob : kNoMatch;
}

}  // namespace fi
