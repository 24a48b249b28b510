#include "probes/media/mpeg_audio.h"

#include "probes/media/adts.h"
#include "probes/media/id3v2.h"
#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr size_t kHeaderSize = 4;
constexpr uint32_t kFrames = 3;

// Sync, version, layer and sampling rate: what the frames of a stream share.
constexpr uint32_t kCommonBits = 0xFFFE0C00;

// Kilobits per second by the four bits of the header; 0 stands for those that are not allowed.
constexpr uint16_t kBitRates[5][16] = {
    {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448, 0},  // MPEG-1, layer I
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384, 0},     // MPEG-1, layer II
    {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 0},      // MPEG-1, layer III
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256, 0},     // MPEG-2, layer I
    {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 0},  // MPEG-2, layers II, III
};
constexpr uint32_t kSamplingRates[] = {44100, 48000, 32000};  // of MPEG-1

// Bytes of the frame with this header; 0 when it is none.
uint32_t FrameLength(uint32_t header) {
  enum : uint32_t { kVersion25 = 0, kVersionReserved = 1, kVersion1 = 3 };
  const uint32_t version = header >> 19 & 3;
  const uint32_t layer = 4 - (header >> 17 & 3);  // 4: reserved
  const uint32_t sampling = header >> 10 & 3;
  if (header >> 21 != 0x7FF || version == kVersionReserved || layer == 4 || sampling == 3) return 0;
  const bool isVersion1 = version == kVersion1;
  const uint32_t row = isVersion1 ? layer - 1 : (layer == 1 ? 3 : 4);
  const uint32_t bits = kBitRates[row][header >> 12 & 15] * 1000u;
  const uint32_t rate = kSamplingRates[sampling] >> (isVersion1              ? 0
                                                     : version == kVersion25 ? 2
                                                                             : 1);
  const uint32_t padding = header >> 9 & 1;
  if (bits == 0) return 0;
  if (layer == 1) return (12 * bits / rate + padding) * 4;
  return (layer == 3 && !isVersion1 ? 72 : 144) * bits / rate + padding;
}

// Frames of one kind in a row from `at` on, counted up to kFrames. The data may end behind the
// last.
struct Chain {
  uint32_t frames = 0;
  bool atEnd = false;
};

Chain WalkFrames(IdentificationStream* stream, int64_t at) {
  Chain chain;
  uint32_t first = 0;
  while (chain.frames < kFrames) {
    const FileBytes<kHeaderSize> header(stream, at);
    chain.atEnd = header.size() == 0;
    const uint32_t bits = header.DwordBE(0);
    if (chain.frames == 0) first = bits;
    const uint32_t length = header.size() < kHeaderSize ? 0 : FrameLength(bits);
    if (length == 0 || ((bits ^ first) & kCommonBits) != 0) break;
    ++chain.frames;
    at += length;
  }
  return chain;
}

// A tag that fills its fields to the last byte is not one for the signature.
bool HasId3v1Tag(IdentificationStream* stream) {
  constexpr uint64_t kTagSize = 128;
  const uint64_t size = FileSize(stream);
  if (size < kTagSize) return false;
  const FileBytes<kTagSize> tag(stream, static_cast<int64_t>(size - kTagSize));
  return tag.size() == kTagSize && tag.Holds(0, "TAG") && tag.Byte(32) == 0 && tag.Byte(62) == 0 &&
         tag.Byte(92) == 0;
}

}  // namespace

FormatId MpegAudioProbe(IdentificationStream* stream) {
  // Nearly every file ends here.
  if (IdStreamSeek(stream, 0, kIoFromStart) != 0) return kNoMatch;
  const uint32_t byte = IdStreamGetByte(stream);
  if (byte != 0xFF && byte != 'I') return kNoMatch;
  const int64_t start = byte == 'I' ? Id3v2End(stream) : 0;
  if (byte == 'I' && start == 0) return kNoMatch;
  if (WalkFrames(stream, start).frames < kFrames) return kNoMatch;
  // Deliberate: the tag decides, though its signature stands far behind this probe.
  return HasId3v1Tag(stream) ? kNoMatch : kFormatMpegAudio;
}

FormatId TaggedAudioProbe(IdentificationStream* stream) {
  const int64_t start = Id3v2End(stream);
  if (start == 0) return kNoMatch;
  const FileBytes<8> data(stream, start);
  constexpr uint32_t kStreamInfoSize = 34;
  if (data.Holds(0, "fLaC") && (data.DwordBE(4) & 0x7FFFFFFF) == kStreamInfoSize)
    return kFormatFlac;
  if (HasAdtsFrames(stream, start)) return kFormatAac;
  const Chain chain = WalkFrames(stream, start);
  const bool matches = chain.frames > 1 || (chain.frames == 1 && chain.atEnd);
  return matches ? kFormatMpegAudioId3v2 : kNoMatch;
}

}  // namespace fi
