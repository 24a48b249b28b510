#include "probes/print/postscript.h"

#include "registry/format_ids.h"

namespace fi {
namespace {

constexpr char kEndOfJob = '\x04';

}  // namespace

FormatId PostScriptProbe(std::string_view text) {
  const bool behindJob = text.starts_with(kEndOfJob);
  if (behindJob) text.remove_prefix(1);
  if (text.starts_with("%!FontType1-")) return kFormatPostScriptPlain;
  if (text == "%!" || text.starts_with("%!\n") || text.starts_with("%!\r")) {
    return kFormatPostScriptPlain;
  }
  if (!text.starts_with("%!PS")) return kNoMatch;
  if (!text.starts_with("%!PS-Adobe")) return kFormatPostScriptPlain;
  return behindJob ? kFormatPostScript : kNoMatch;
}

}  // namespace fi
