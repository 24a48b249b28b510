#include "probes/storage/message_class.h"

#include "platform/format_ids.h"

namespace fi {

FormatId MapMessageClass(IdentificationStream* /*stream*/, FormatId baseId) {
  return baseId == kFormatOutlookMessage ? kFormatOutlookMessage : kFormatOutlookItemTemplate;
}

}  // namespace fi
