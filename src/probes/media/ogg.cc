#include "probes/media/ogg.h"

#include <array>
#include <optional>
#include <string_view>

#include "formatid/io.h"
#include "registry/format_ids.h"
#include "stream/buffered_scan.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr uint32_t kMaxPages = 25;
constexpr std::string_view kCapture = "OggS";

// Bits of the header type.
constexpr uint32_t kContinuesPacket = 0x01;
constexpr uint32_t kBeginsStream = 0x02;
constexpr uint32_t kAllBits = 0x07;

struct Page {
  uint32_t type;
  int64_t body;       // file offset
  uint32_t bodySize;  // bytes: up to 255 segments of up to 255
};

enum class Codec : uint8_t { kNone, kOpus, kVorbis, kVp8, kTheora };

struct Codecs {
  Codec audio = Codec::kNone;
  Codec video = Codec::kNone;
};

// Reads on to behind the next capture pattern; false when there is none. Deliberate: without a
// limit. In the worst case one identification reads a damaged file to its end, but only once, since
// the search never goes back.
bool FindCapture(IdentificationStream* stream) {
  size_t matched = 0;
  while (matched < kCapture.size()) {
    const uint32_t byte = IdStreamGetByte(stream);
    if (byte == kEndOfData) return false;
    // No letter of the pattern but the first can begin it again.
    if (byte != static_cast<uint8_t>(kCapture[matched])) matched = 0;
    if (byte == static_cast<uint8_t>(kCapture[matched])) {
      ++matched;
    } else {
      PassBuffered(stream, BufferedBytesBefore(stream, kCapture[0], UINT32_MAX));
    }
  }
  return true;
}

// Reads the next page header and stops at the page's body. Empty when there is none. The checksum
// is not verified.
std::optional<Page> ReadPageHeader(IdentificationStream* stream) {
  constexpr uint16_t kPositionSerialNumberAndChecksum = 8 + 4 + 4 + 4;
  if (!FindCapture(stream) || IdStreamGetByte(stream) != 0) return std::nullopt;
  Page page{};
  page.type = IdStreamGetByte(stream);
  if (page.type > kAllBits) return std::nullopt;
  // A packet that goes on from an earlier page cannot begin a stream.
  constexpr uint32_t kContradiction = kContinuesPacket | kBeginsStream;
  if ((page.type & kContradiction) == kContradiction) return std::nullopt;
  (void)IdStreamSkip(kPositionSerialNumberAndChecksum, stream);
  const uint32_t segments = IdStreamGetByte(stream);
  if (segments == kEndOfData) return std::nullopt;
  for (uint32_t i = 0; i < segments; ++i) {
    const uint32_t size = IdStreamGetByte(stream);
    if (size == kEndOfData) return std::nullopt;
    page.bodySize += size;
  }
  page.body = IdStreamPosition(stream);
  return page;
}

// The codec that the first packet of the page names. Deliberate: eight bytes are read even when the
// packet is shorter.
Codec ReadCodec(IdentificationStream* stream) {
  std::array<char, 8> packet{};
  size_t length = 0;
  while (length < packet.size()) {
    const uint32_t byte = IdStreamGetByte(stream);
    if (byte == kEndOfData) break;
    packet[length++] = static_cast<char>(byte);
  }
  const std::string_view text(packet.data(), length);
  if (text.starts_with("OpusHead")) return Codec::kOpus;
  if (text.starts_with("\x01vorbis")) return Codec::kVorbis;
  if (text.starts_with("\x80theora")) return Codec::kTheora;
  return text.starts_with("OVP80") ? Codec::kVp8 : Codec::kNone;
}

// Only the first codec of each kind counts.
void Remember(Codec codec, Codecs& codecs) {
  const bool audio = codec == Codec::kOpus || codec == Codec::kVorbis;
  Codec& kind = audio ? codecs.audio : codecs.video;
  if (kind == Codec::kNone) kind = codec;
}

// Moves behind the page's body; false when the data end before it does.
bool SkipBody(IdentificationStream* stream, const Page& page) {
  if (page.bodySize == 0) return IdStreamSeek(stream, page.body, kIoFromStart) == 0;
  return IdStreamSeek(stream, page.body + page.bodySize - 1, kIoFromStart) == 0 &&
         IdStreamGetByte(stream) != kEndOfData;
}

FormatId IdOf(const Codecs& codecs) {
  const bool opus = codecs.audio == Codec::kOpus;
  // Deliberate: a video codec without an audio codec does not count.
  if (!opus && codecs.audio != Codec::kVorbis) return kFormatOgg;
  switch (codecs.video) {
    case Codec::kVp8:
      return opus ? kFormatOggVp8Opus : kFormatOggVp8Vorbis;
    case Codec::kTheora:
      return opus ? kFormatOggTheoraOpus : kFormatOggTheoraVorbis;
    default:
      return opus ? kFormatOggOpus : kFormatOggVorbis;
  }
}

}  // namespace

FormatId OggProbe(IdentificationStream* stream) {
  if (IdStreamSeek(stream, 0, kIoFromStart) != 0) return kNoMatch;
  std::optional<Page> page = ReadPageHeader(stream);
  if (!page) return kNoMatch;
  Codecs codecs;
  for (uint32_t pages = 1; page; ++pages) {
    if ((page->type & kBeginsStream) != 0) Remember(ReadCodec(stream), codecs);
    const bool complete = codecs.audio != Codec::kNone && codecs.video != Codec::kNone;
    if (complete || pages == kMaxPages) break;
    if (!SkipBody(stream, *page)) {
      if (pages == 1) return kNoMatch;
      break;
    }
    page = ReadPageHeader(stream);
  }
  return IdOf(codecs);
}

FormatId OtherOggCodecProbe(IdentificationStream* stream) {
  constexpr size_t kSegmentCount = 26;
  const FileBytes<512> page(stream, 0);
  const size_t packet = kSegmentCount + 1 + page.Byte(kSegmentCount);
  if (page.Holds(packet,
                 "\x7F"
                 "FLAC"))
    return kFormatOggFlac;
  if (page.Holds(packet, "\x80theora")) return kFormatOggTheora;
  return page.Holds(packet, "Speex   ") ? kFormatSpeex : kNoMatch;
}

}  // namespace fi
