#include "probes/storage/classifier.h"

namespace fi {

uint32_t ClassifyCompoundDocument(IdentificationStream* /*stream*/, const char* /*extension*/,
                                  FormatId* outId) {
  *outId = kNoMatch;
  return 0;
}

}  // namespace fi
