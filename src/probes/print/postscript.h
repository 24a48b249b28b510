// PostScript programs and Type 1 fonts (PostScript Language Reference) without the claim to follow
// Adobe's structuring conventions, or behind the control-D of a spooler.
#ifndef FI_PROBES_PRINT_POSTSCRIPT_H_
#define FI_PROBES_PRINT_POSTSCRIPT_H_

#include <string_view>

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatPostScriptPlain, or kFormatPostScript where the claim stands behind a control-D, or
// kNoMatch.
FormatId PostScriptProbe(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_PRINT_POSTSCRIPT_H_
