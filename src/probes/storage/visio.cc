#include "probes/storage/visio.h"

#include "registry/format_ids.h"
#include "stream/child_stream.h"

namespace fi {

FormatId ProbeVisioDocument(IdentificationStream* stream) {
  constexpr uint16_t kVersionAt = 24;  // behind the words "Visio (TM) Drawing"
  if (!IsStorage(stream->handle)) return kNoMatch;
  const ChildStream child(stream->handle, "VisioDocument");
  uint32_t version = 0;
  if (!child || IdStreamSkip(kVersionAt, child.get()) != 0) return kNoMatch;
  if (IdStreamGetDwordLE(child.get(), &version) != 0) return kNoMatch;
  switch (version) {
    case 0x00030003:
      return kFormatVisio3;
    case 0x00040000:
      return kFormatVisio4;
    case 0x00050000:
      return kFormatVisio5;
    case 0x00060000:
      return kFormatVisio2000;
    case 0x000B0000:
      return kFormatVisio2003;
    default:
      return kNoMatch;
  }
}

}  // namespace fi
