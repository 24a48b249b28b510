#include "properties/image/png.h"

#include <algorithm>
#include <string_view>

#include "stream/file_bytes.h"

namespace fi {
namespace {

// Chunks that are looked at: image data in chunks of 8 KB fills 512 with 4 MB.
constexpr uint32_t kMaxChunks = 512;

// Chunks that the versions of the format brought, and that of animation (Third Edition).
constexpr std::string_view kSince11[] = {"iCCP", "sPLT", "sRGB"};
constexpr std::string_view kSince12[] = {"iTXt"};
constexpr std::string_view kAnimation = "acTL";

template <size_t kCount>
bool IsOneOf(std::string_view type, const std::string_view (&types)[kCount]) {
  return std::find(std::begin(types), std::end(types), type) != std::end(types);
}

}  // namespace

void ReadPngProperties(const PropertyQuestion& question, PropertySet& out) {
  constexpr int64_t kSignature = 8;
  constexpr int64_t kAround = 12;  // length, type and checksum of a chunk
  std::string_view version = "1.0";
  int64_t offset = kSignature;
  for (uint32_t count = 0; count < kMaxChunks; ++count) {
    const FileBytes<8> head(question.stream, offset);
    if (!head.Has(0, 8)) {
      out.Set(Property::kDamaged, "IEND chunk", "chunks", offset);
      break;
    }
    const std::string_view type = head.View().substr(4, 4);
    if (type == kAnimation) out.Set(Property::kProfile, "APNG", "acTL", offset);
    if (IsOneOf(type, kSince12)) version = "1.2";
    if (version == "1.0" && IsOneOf(type, kSince11)) version = "1.1";
    offset += kAround + int64_t{head.DwordBE(0)};
    if (type != "IEND") continue;
    const auto size = static_cast<int64_t>(FileSize(question.stream));
    if (size > offset) {
      out.SetNumber(Property::kTrailingBytes, static_cast<uint64_t>(size - offset), "IEND", offset);
    }
    break;
  }
  out.Set(Property::kVersion, version, "chunks");
}

}  // namespace fi
