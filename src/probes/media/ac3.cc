#include "probes/media/ac3.h"

#include <iterator>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr size_t kHeaderSize = 6;
constexpr uint32_t kSync = 0x0B77;
constexpr uint32_t kSamplingRates = 3;
constexpr uint32_t kNewestVersion = 10;  // the lower rates; from 11 on the stream is another

// Kilobits per second for each pair of codes.
constexpr uint16_t kBitRates[] = {32,  40,  48,  56,  64,  80,  96,  112, 128, 160,
                                  192, 224, 256, 320, 384, 448, 512, 576, 640};

using Header = FileBytes<kHeaderSize>;

// Bytes of the frame; 0 when there is none.
uint32_t FrameLength(const Header& header) {
  const uint32_t sampling = header.Byte(4) >> 6;  // 48, 44.1 and 32 kHz
  const uint32_t code = header.Byte(4) & 0x3F;
  if (header.size() < kHeaderSize || header.WordBE(0) != kSync || sampling >= kSamplingRates ||
      code / 2 >= std::size(kBitRates) || header.Byte(5) >> 3 > kNewestVersion) {
    return 0;
  }
  const uint32_t rate = kBitRates[code / 2];
  if (sampling == 1) return 2 * (rate * 320 / 147 + code % 2);
  return 2 * rate * (sampling == 0 ? 2 : 3);
}

constexpr uint32_t kNewestEnhanced = 16;

// Enhanced AC-3: the frame's length in words less one stands behind the kind of the stream.
FormatId EnhancedProbe(IdentificationStream* stream, const Header& first) {
  constexpr uint32_t kReservedKind = 3;
  constexpr uint32_t kShortest = 64;
  const uint32_t length = ((first.WordBE(2) & 0x7FF) + 1) * 2;
  if (first.WordBE(0) != kSync || first.Byte(2) >> 6 == kReservedKind || length < kShortest) {
    return kNoMatch;
  }
  if (FileSize(stream) == length) return kFormatEnhancedAc3;
  const Header second(stream, length);
  const bool same = second.WordBE(0) == kSync && second.Byte(5) >> 3 == first.Byte(5) >> 3;
  return same ? kFormatEnhancedAc3 : kNoMatch;
}

}  // namespace

FormatId Ac3Probe(IdentificationStream* stream) {
  const Header first(stream, 0);
  const uint32_t version = first.Byte(5) >> 3;
  if (version > kNewestVersion && version <= kNewestEnhanced) return EnhancedProbe(stream, first);
  const uint32_t length = FrameLength(first);
  if (length == 0) return kNoMatch;
  if (FileSize(stream) == length) return kFormatAc3;
  const Header second(stream, length);
  const bool same = (first.Byte(4) ^ second.Byte(4)) >> 6 == 0 && first.Byte(5) == second.Byte(5);
  return same && FrameLength(second) != 0 ? kFormatAc3 : kNoMatch;
}

}  // namespace fi
