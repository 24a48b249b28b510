// STEP models (ISO 10303-21, exchange structure): clear text that begins with the name of the
// standard.
#ifndef FI_PROBES_MODEL_STEP_H_
#define FI_PROBES_MODEL_STEP_H_

#include <string_view>

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatStep or kNoMatch.
FormatId StepProbe(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_MODEL_STEP_H_
