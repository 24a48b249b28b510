#include "properties/image/jpeg2000.h"

#include <string_view>

#include "stream/file_bytes.h"

namespace fi {

void ReadJpeg2000Properties(const PropertyQuestion& question, PropertySet& out) {
  constexpr size_t kFileType = 12;  // behind the signature box
  const FileBytes<32> head(question.stream, 0);
  if (head.Holds(0, "\xFF\x4F\xFF\x51")) {
    return out.Set(Property::kProfile, "code stream", "header", 0);
  }
  if (!head.Holds(kFileType + 4, "ftyp") || !head.Has(kFileType + 8, 4)) return;
  std::string_view brand = head.View().substr(kFileType + 8, 4);
  while (brand.ends_with(' ')) brand.remove_suffix(1);
  out.Set(Property::kProfile, brand, "ftyp", kFileType + 8);
}

}  // namespace fi
