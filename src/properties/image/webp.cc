#include "properties/image/webp.h"

#include "stream/file_bytes.h"

namespace fi {

void ReadWebPProperties(const PropertyQuestion& question, PropertySet& out) {
  constexpr size_t kChunk = 12;
  constexpr uint8_t kAnimation = 0x02;
  const FileBytes<24> head(question.stream, 0);
  if (head.Holds(kChunk, "VP8 ")) out.Set(Property::kProfile, "lossy", "VP8", kChunk);
  if (head.Holds(kChunk, "VP8L")) out.Set(Property::kProfile, "lossless", "VP8L", kChunk);
  if (!head.Holds(kChunk, "VP8X")) return;
  const bool isAnimated = (head.Byte(kChunk + 8) & kAnimation) != 0;
  out.Set(Property::kProfile, isAnimated ? "extended, animated" : "extended", "VP8X", kChunk);
}

}  // namespace fi
