#include "probes/model/step.h"

#include "registry/format_ids.h"
#include "stream/text_view.h"

namespace fi {

FormatId StepProbe(std::string_view text) {
  return SkipSpace(text).starts_with("ISO-10303-21;") ? kFormatStep : kNoMatch;
}

}  // namespace fi
