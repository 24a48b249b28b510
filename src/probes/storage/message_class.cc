#include "probes/storage/message_class.h"

namespace fi {

FormatId MapMessageClass(IdentificationStream* /*stream*/, FormatId baseId) {
  return baseId == 1143 ? 1143 : 1311;
}

}  // namespace fi
