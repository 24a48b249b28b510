#include "probes/content/encoded_text.h"

namespace fi {

FormatId EncodedTextProbe(IdentificationStream* /*stream*/) { return kNoMatch; }

}  // namespace fi
