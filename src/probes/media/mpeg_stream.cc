#include "probes/media/mpeg_stream.h"

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr uint8_t kPackCode = 0xBA;
constexpr uint8_t kSequenceCode = 0xB3;

using Header = FileBytes<12>;

// Two bits in front say which standard; the system clock has marker bits between its parts.
bool IsPack(const Header& header) {
  const auto marked = [&](uint8_t bit) {
    return (header.Byte(6) & bit) != 0 && (header.Byte(8) & bit) != 0;
  };
  if ((header.Byte(4) & 0xC4) == 0x44) return marked(0x04);  // MPEG-2
  return (header.Byte(4) & 0xF1) == 0x21 && marked(0x01);    // MPEG-1
}

bool IsSequence(const Header& header) {
  constexpr uint8_t kMarker = 0x20;
  constexpr uint32_t kMaxAspect = 14;
  constexpr uint32_t kMaxRate = 13;  // the standards end at 8; encoders have taken some above
  const uint32_t extents = header.DwordBE(4) >> 8;  // 12 bits each
  const uint32_t aspect = header.Byte(7) >> 4;
  const uint32_t rate = header.Byte(7) & 0x0F;
  return extents >> 12 > 0 && (extents & 0x0FFF) > 0 && aspect >= 1 && aspect <= kMaxAspect &&
         rate >= 1 && rate <= kMaxRate && (header.Byte(10) & kMarker) != 0;
}

}  // namespace

FormatId MpegStreamProbe(IdentificationStream* stream) {
  const Header header(stream, 0);
  const uint8_t code = header.Byte(3);
  const bool matches =
      (code == kPackCode && IsPack(header)) || (code == kSequenceCode && IsSequence(header));
  return matches ? kFormatMpegStream : kNoMatch;
}

}  // namespace fi
