#include "properties/image/heif.h"

#include "stream/file_bytes.h"

namespace fi {

void ReadHeifProperties(const PropertyQuestion& question, PropertySet& out) {
  const FileBytes<12> head(question.stream, 0);
  if (head.Holds(4, "ftyp") && head.Has(8, 4)) {
    out.Set(Property::kProfile, head.View().substr(8, 4), "ftyp", 8);
  }
}

}  // namespace fi
