#include "probes/print/afp.h"

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr size_t kIntroducerSize = 9;  // the byte before it included
constexpr uint32_t kShortestField = 8;
constexpr uint32_t kShortestBegin = 16;  // with a name of eight characters
constexpr uint8_t kCarriageControl = 0x5A;
constexpr uint8_t kClass = 0xD3;
constexpr uint8_t kBegin = 0xA8;

using Introducer = FileBytes<kIntroducerSize>;

bool IsField(const Introducer& field) {
  return field.size() == kIntroducerSize && field.Byte(0) == kCarriageControl &&
         field.WordBE(1) >= kShortestField && field.Byte(3) == kClass;
}

}  // namespace

FormatId AfpProbe(IdentificationStream* stream) {
  const Introducer first(stream, 0);
  const uint32_t length = first.WordBE(1);
  if (!IsField(first) || length < kShortestBegin || first.Byte(4) != kBegin || first.Byte(6) != 0) {
    return kNoMatch;
  }
  const Introducer second(stream, int64_t{1} + length);
  return IsField(second) ? kFormatAfp : kNoMatch;
}

}  // namespace fi
