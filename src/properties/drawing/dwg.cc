#include "properties/drawing/dwg.h"

#include "stream/file_bytes.h"

namespace fi {

void ReadDwgProperties(const PropertyQuestion& question, PropertySet& out) {
  const FileBytes<6> head(question.stream, 0);
  if (head.Has(0, 6)) out.Set(Property::kVersion, head.View(), "header", 0);
}

}  // namespace fi
