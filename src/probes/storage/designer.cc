#include "probes/storage/designer.h"

#include "registry/format_ids.h"
#include "stream/child_stream.h"

namespace fi {

FormatId ProbeDesignerDoc(IdentificationStream* stream) {
  constexpr uint32_t kVersionAt = 13;
  constexpr int32_t kVersion6 = 5;
  if (!IsStorage(stream->handle)) return kFormatMicrografxDesigner6;
  const ChildStream child(stream->handle, "DesignerDoc");
  if (!child) return kFormatMicrografxDesigner6;
  (void)IdStreamSeek(child.get(), kVersionAt, kIoFromStart);
  const int32_t version = IdStreamGetWordLE(child.get());
  return version < 0 || version == kVersion6 ? kFormatMicrografxDesigner6
                                             : kFormatMicrografxDesignerLater;
}

}  // namespace fi
