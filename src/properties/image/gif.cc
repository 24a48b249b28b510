#include "properties/image/gif.h"

#include "stream/file_bytes.h"

namespace fi {

void ReadGifProperties(const PropertyQuestion& question, PropertySet& out) {
  const FileBytes<6> head(question.stream, 0);
  if (head.Holds(0, "GIF") && head.Has(0, 6)) {
    out.Set(Property::kVersion, head.View().substr(3), "header", 3);
  }
}

}  // namespace fi
