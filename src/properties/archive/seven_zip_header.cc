#include "properties/archive/seven_zip_header.h"

#include <algorithm>
#include <string_view>

namespace fi {
namespace {

using namespace std::string_view_literals;

// Identifiers of parts.
constexpr uint8_t kEnd = 0x00;
constexpr uint8_t kHeader = 0x01;
constexpr uint8_t kArchiveProperties = 0x02;
constexpr uint8_t kAdditionalStreams = 0x03;
constexpr uint8_t kMainStreams = 0x04;
constexpr uint8_t kPackInfo = 0x06;
constexpr uint8_t kUnpackInfo = 0x07;
constexpr uint8_t kSize = 0x09;
constexpr uint8_t kChecksum = 0x0A;
constexpr uint8_t kFolder = 0x0B;
constexpr uint8_t kUnpackSize = 0x0C;
constexpr uint8_t kEncodedHeader = 0x17;

constexpr auto kLzma = "\x03\x01\x01"sv;
constexpr auto kAes = "\x06\xF1\x07\x01"sv;

// Coders of a folder and their streams; archives have four coders at most.
constexpr uint64_t kMostCoders = 32;

// Reads numbers and bytes one behind the other. What is not there reads as 0 and marks the end.
class Reader {
 public:
  explicit Reader(std::span<const uint8_t> bytes) : bytes_(bytes) {}

  bool IsCut() const { return isCut_; }

  uint8_t Byte() {
    if (at_ >= bytes_.size()) {
      isCut_ = true;
      return 0;
    }
    return bytes_[at_++];
  }

  // The leading one bits of the first byte are the number of bytes that follow, lowest first; what
  // is left of the first byte stands above them.
  uint64_t Number() {
    const uint32_t first = Byte();
    uint64_t value = 0;
    uint32_t mask = 0x80;
    for (uint32_t shift = 0; shift < 64; shift += 8, mask >>= 1) {
      if ((first & mask) == 0) return value | uint64_t{first & (mask - 1)} << shift;
      value |= uint64_t{Byte()} << shift;
    }
    return value;
  }

  std::string_view Take(uint64_t count) {
    if (count > bytes_.size() - at_) {
      isCut_ = true;
      return {};
    }
    const char* start = static_cast<const char*>(static_cast<const void*>(bytes_.data() + at_));
    at_ += static_cast<size_t>(count);
    return {start, static_cast<size_t>(count)};
  }

  // Checksums of `count` items: all of them, or a bit for each that has one.
  void SkipChecksums(uint64_t count) {
    constexpr uint64_t kChecksumSize = 4;
    uint64_t defined = count;
    if (Byte() == 0) {
      defined = 0;
      if (count > bytes_.size() * 8) isCut_ = true;
      if (isCut_) return;
      for (const char bits : Take((count + 7) / 8)) {
        defined += static_cast<uint64_t>(__builtin_popcount(static_cast<uint8_t>(bits)));
      }
    }
    if (defined > bytes_.size()) isCut_ = true;
    if (!isCut_) Take(defined * kChecksumSize);
  }

 private:
  std::span<const uint8_t> bytes_;
  size_t at_ = 0;
  bool isCut_ = false;
};

// Where the packed streams lie. Leaves the reader behind the part.
bool ReadPackInfo(Reader& reader, SevenZipStreams* streams) {
  streams->packPosition = reader.Number();
  const uint64_t count = reader.Number();
  for (uint8_t part = reader.Byte(); part != kEnd; part = reader.Byte()) {
    if (reader.IsCut()) return false;
    if (part == kChecksum) {
      reader.SkipChecksums(count);
    } else if (part == kSize) {
      for (uint64_t i = 0; i < count && !reader.IsCut(); ++i) {
        const uint64_t size = reader.Number();
        if (i == 0) streams->packSize = size;
      }
    } else {
      return false;
    }
  }
  return !reader.IsCut();
}

// Reads a folder; adds its streams that go out, each of which has a size.
bool ReadFolder(Reader& reader, SevenZipStreams* streams, uint64_t* outStreams) {
  constexpr uint8_t kIdSize = 0x0F;
  constexpr uint8_t kIsComplex = 0x10;
  constexpr uint8_t kHasProperties = 0x20;
  const uint64_t coders = reader.Number();
  if (coders == 0 || coders > kMostCoders) return false;
  uint64_t in = 0;
  uint64_t out = 0;
  for (uint64_t i = 0; i < coders; ++i) {
    const uint8_t flags = reader.Byte();
    const std::string_view id = reader.Take(flags & kIdSize);
    const bool isComplex = (flags & kIsComplex) != 0;
    const uint64_t coderIn = isComplex ? reader.Number() : 1;
    const uint64_t coderOut = isComplex ? reader.Number() : 1;
    if (coderIn > kMostCoders || coderOut > kMostCoders) return false;
    in += coderIn;
    out += coderOut;
    std::string_view properties;
    if ((flags & kHasProperties) != 0) properties = reader.Take(reader.Number());
    if (reader.IsCut()) return false;
    streams->isEncrypted |= id == kAes;
    streams->isLzmaAlone =
        coders == 1 && id == kLzma && properties.size() == streams->properties.size();
    if (streams->isLzmaAlone) std::ranges::copy(properties, streams->properties.begin());
  }
  if (out == 0 || in + 1 < out) return false;
  for (uint64_t i = 0; i < 2 * (out - 1); ++i) reader.Number();  // which stream leads into which
  const uint64_t packed = in + 1 - out;
  for (uint64_t i = 0; packed > 1 && i < packed; ++i) reader.Number();
  *outStreams += out;
  return !reader.IsCut();
}

// The folders and the size of what the first one unpacks to.
bool ReadUnpackInfo(Reader& reader, SevenZipStreams* streams) {
  if (reader.Byte() != kFolder) return false;
  const uint64_t folders = reader.Number();
  if (reader.Byte() != 0) return false;  // they are described elsewhere
  uint64_t outStreams = 0;
  for (uint64_t i = 0; i < folders; ++i) {
    if (!ReadFolder(reader, streams, &outStreams)) return false;
    if (streams->isEncrypted) return true;
  }
  streams->isLzmaAlone = streams->isLzmaAlone && folders == 1;
  if (reader.IsCut()) return false;
  if (reader.Byte() == kUnpackSize) streams->unpackSize = reader.Number();
  return true;
}

void ReadStreams(Reader& reader, SevenZipStreams* streams) {
  uint8_t part = reader.Byte();
  if (part == kPackInfo) {
    if (!ReadPackInfo(reader, streams)) return;
    part = reader.Byte();
  }
  if (reader.IsCut()) return;
  streams->isKnown = part == kUnpackInfo ? ReadUnpackInfo(reader, streams) : part == kEnd;
}

}  // namespace

SevenZipHeader ReadSevenZipHeader(std::span<const uint8_t> header, SevenZipStreams* streams) {
  Reader reader(header);
  const uint8_t kind = reader.Byte();
  if (reader.IsCut()) return SevenZipHeader::kNone;
  if (kind == kEncodedHeader) {
    ReadStreams(reader, streams);
    return SevenZipHeader::kEncoded;
  }
  if (kind != kHeader) return SevenZipHeader::kNone;
  uint8_t part = reader.Byte();
  if (part == kArchiveProperties) {
    while (reader.Byte() != kEnd && !reader.IsCut()) reader.Take(reader.Number());
    part = reader.Byte();
  }
  // No writer makes additional streams; behind them nothing can be told.
  if (part == kAdditionalStreams || reader.IsCut()) return SevenZipHeader::kPlain;
  if (part == kMainStreams) {
    ReadStreams(reader, streams);
  } else {
    streams->isKnown = true;
  }
  return SevenZipHeader::kPlain;
}

}  // namespace fi
