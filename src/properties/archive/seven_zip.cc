#include "properties/archive/seven_zip.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <string_view>

#include "platform/lzma.h"
#include "platform/work.h"
#include "properties/archive/seven_zip_header.h"
#include "properties/record/short_text.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

// Of a header as much is looked at: the coders stand at its beginning.
constexpr size_t kMostHeader = 256 * 1024;
using Block = FileBytes<kMostHeader>;

constexpr int64_t kSignatureHeader = 32;
constexpr std::string_view kPlace = "header";

// `count` bytes from there on, as far as they are looked at; null where memory has run out.
std::unique_ptr<Block> ReadBlock(IdentificationStream* stream, int64_t offset) {
  return std::unique_ptr<Block>(new (std::nothrow) Block(stream, offset));
}

std::span<const uint8_t> Part(const Block& block, uint64_t size) {
  return block.Bytes().first(static_cast<size_t>(std::min<uint64_t>(size, block.size())));
}

// An encoded header holds the plain one, compressed.
void ReadEncodedHeader(IdentificationStream* stream, const SevenZipStreams& outer, int64_t offset,
                       PropertySet& out) {
  if (!outer.isLzmaAlone || outer.packPosition > INT64_MAX / 2) return;
  const auto packed =
      ReadBlock(stream, kSignatureHeader + static_cast<int64_t>(outer.packPosition));
  const auto size = static_cast<size_t>(std::min<uint64_t>(outer.unpackSize, kMostHeader));
  const std::unique_ptr<uint8_t[]> room(new (std::nothrow) uint8_t[size]);
  Work* const work = WorkOf(stream->handle);
  if (packed == nullptr || room == nullptr || size == 0) return;
  if (work != nullptr && work->Inflatable() < size) return;
  const std::span<const uint8_t> input = Part(*packed, outer.packSize);
  const size_t stored = DecompressLzma(outer.properties, input, {room.get(), size});
  if (work != nullptr) work->SpendInflated(input.size(), stored);

  SevenZipStreams streams;
  const SevenZipHeader kind = ReadSevenZipHeader({room.get(), stored}, &streams);
  if (kind != SevenZipHeader::kPlain) return;
  if (streams.isEncrypted) {
    out.Set(Property::kEncryption, "password", kPlace, offset);
    out.Set(Property::kEncryptionScheme, "AES-256", kPlace, offset);
  } else if (streams.isKnown) {
    out.Set(Property::kEncryption, "none", kPlace, offset);
  }
}

}  // namespace

void ReadSevenZipProperties(const PropertyQuestion& question, PropertySet& out) {
  constexpr size_t kVersionAt = 6;
  constexpr size_t kOffsetAt = 12;
  constexpr size_t kSizeAt = 20;
  IdentificationStream* stream = question.stream;
  const FileBytes<kSignatureHeader> start(stream, 0);
  if (!start.Has(0, kSignatureHeader)) return;
  ShortText version;
  version.AppendNumber(start.Byte(kVersionAt));
  version.Append(".");
  version.AppendNumber(start.Byte(kVersionAt + 1));
  out.Set(Property::kVersion, version.view(), "signature header", kVersionAt);

  const uint64_t relative = start.DwordLE(kOffsetAt) | uint64_t{start.DwordLE(kOffsetAt + 4)} << 32;
  const uint64_t size = start.DwordLE(kSizeAt) | uint64_t{start.DwordLE(kSizeAt + 4)} << 32;
  if (size == 0) return;  // of an archive without files, or of one that was never finished
  if (relative > INT64_MAX / 2) return out.Set(Property::kDamaged, kPlace);
  const int64_t offset = kSignatureHeader + static_cast<int64_t>(relative);
  const auto block = ReadBlock(stream, offset);
  if (block == nullptr) return;
  if (block->size() < std::min<uint64_t>(size, kMostHeader)) {
    return out.Set(Property::kDamaged, kPlace, "signature header", kOffsetAt);
  }
  SevenZipStreams streams;
  const SevenZipHeader kind = ReadSevenZipHeader(Part(*block, size), &streams);
  if (kind == SevenZipHeader::kNone) return out.Set(Property::kDamaged, kPlace, kPlace, offset);
  if (streams.isEncrypted) {
    out.Set(Property::kEncryption, "password", kPlace, offset);
    const bool isAll = kind == SevenZipHeader::kEncoded;
    return out.Set(Property::kEncryptionScheme, isAll ? "AES-256, headers" : "AES-256", kPlace,
                   offset);
  }
  if (kind == SevenZipHeader::kEncoded) return ReadEncodedHeader(stream, streams, offset, out);
  if (streams.isKnown) out.Set(Property::kEncryption, "none", kPlace, offset);
}

}  // namespace fi
