// Scripts with the name of their interpreter in the first line, as execve(2) reads it: "#!",
// blanks, and an absolute path.
#ifndef FI_PROBES_TEXT_SCRIPT_H_
#define FI_PROBES_TEXT_SCRIPT_H_

#include <string_view>

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatScript or kNoMatch.
FormatId ScriptProbe(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_TEXT_SCRIPT_H_
