#include "properties/program/java_class.h"

#include "properties/record/short_text.h"
#include "stream/file_bytes.h"

namespace fi {

void ReadJavaClassProperties(const PropertyQuestion& question, PropertySet& out) {
  const FileBytes<8> head(question.stream, 0);
  if (!head.Has(0, 8)) return;
  ShortText version;
  version.AppendNumber(head.WordBE(6));
  version.Append(".");
  version.AppendNumber(head.WordBE(4));
  out.Set(Property::kVersion, version.view(), "header", 4);
}

}  // namespace fi
