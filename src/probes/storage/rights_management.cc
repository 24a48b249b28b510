#include "probes/storage/rights_management.h"

namespace fi {

bool CheckDrmContentStream(IdentificationStream* /*stream*/) { return false; }

}  // namespace fi
