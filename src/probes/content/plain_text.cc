#include "probes/content/plain_text.h"

namespace fi {

FormatId ClassifyPlainText(IdentificationStream* /*stream*/) { return kFormatUnknown; }

}  // namespace fi
