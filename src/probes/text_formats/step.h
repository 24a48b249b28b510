// STEP models (ISO 10303-21, exchange structure): clear text that begins with the name of the
// standard.
#ifndef FI_PROBES_TEXT_FORMATS_STEP_H_
#define FI_PROBES_TEXT_FORMATS_STEP_H_

#include <string_view>

#include "engine/id_stream.h"
#include "formatid/formatid.h"

namespace fi {

// kFormatStep or kNoMatch.
FormatId StepProbe(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_TEXT_FORMATS_STEP_H_
