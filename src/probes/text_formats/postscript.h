// PostScript programs and Type 1 fonts (PostScript Language Reference) that do not claim to follow
// Adobe's structuring conventions, and those that a control-D of a spooler precedes.
#ifndef FI_PROBES_TEXT_FORMATS_POSTSCRIPT_H_
#define FI_PROBES_TEXT_FORMATS_POSTSCRIPT_H_

#include <string_view>

#include "engine/id_stream.h"
#include "formatid/formatid.h"

namespace fi {

// kFormatPostScriptPlain, or kFormatPostScript where the claim stands behind a control-D, or
// kNoMatch.
FormatId PostScriptProbe(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_TEXT_FORMATS_POSTSCRIPT_H_
