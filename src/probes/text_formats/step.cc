#include "probes/text_formats/step.h"

#include "platform/format_ids.h"
#include "probes/text_view.h"

namespace fi {

FormatId StepProbe(std::string_view text) {
  return SkipSpace(text).starts_with("ISO-10303-21;") ? kFormatStep : kNoMatch;
}

}  // namespace fi
