#include "probes/image/icon.h"

#include <algorithm>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

enum class Kind : uint8_t { kIcon = 1, kCursor = 2 };

constexpr size_t kHeaderSize = 6;
constexpr size_t kEntrySize = 16;
constexpr size_t kEntriesTested = 4;
constexpr uint32_t kMaxImages = 256;

using Directory = FileBytes<kHeaderSize + kEntriesTested * kEntrySize>;

bool IsDepth(uint32_t bits) {
  constexpr uint32_t kDepths[] = {0, 1, 4, 8, 16, 24, 32};
  return std::find(std::begin(kDepths), std::end(kDepths), bits) != std::end(kDepths);
}

// `first` is the offset behind the directory.
bool IsEntry(const Directory& directory, size_t at, Kind kind, uint64_t first, uint64_t fileSize) {
  if (!directory.Has(at, kEntrySize) || directory.Byte(at + 3) != 0) return false;
  // A cursor has its hot spot where an icon has planes and bits.
  if (kind == Kind::kIcon && (directory.WordLE(at + 4) > 1 || !IsDepth(directory.WordLE(at + 6)))) {
    return false;
  }
  const uint64_t size = directory.DwordLE(at + 8);
  const uint64_t offset = directory.DwordLE(at + 12);
  return size > 0 && offset >= first && offset <= fileSize && size <= fileSize - offset;
}

bool HasImages(IdentificationStream* stream, Kind kind) {
  const Directory directory(stream, 0);
  if (directory.WordLE(0) != 0 || directory.WordLE(2) != static_cast<uint32_t>(kind)) return false;
  const uint32_t count = directory.WordLE(4);
  if (count == 0 || count > kMaxImages) return false;
  const uint64_t fileSize = FileSize(stream);
  for (size_t i = 0; i < std::min<size_t>(count, kEntriesTested); ++i) {
    if (!IsEntry(directory, kHeaderSize + i * kEntrySize, kind, kHeaderSize + count * kEntrySize,
                 fileSize)) {
      return false;
    }
  }
  return true;
}

}  // namespace

FormatId IconProbe(IdentificationStream* stream) {
  return HasImages(stream, Kind::kIcon) ? kFormatWindowsIcon : kNoMatch;
}

FormatId CursorProbe(IdentificationStream* stream) {
  return HasImages(stream, Kind::kCursor) ? kFormatWindowsCursor : kNoMatch;
}

}  // namespace fi
