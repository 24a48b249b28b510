#include "properties/image/tiff.h"

#include <optional>

#include "properties/record/short_text.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr uint16_t kDngVersion = 50706;
constexpr uint16_t kBytes = 1;  // the type of a field of bytes

// Entries of the first directory that are looked at. Real directories hold some tens.
constexpr uint32_t kMaxEntries = 256;

// Four bytes of the DNG version, which stand in the field itself.
std::optional<uint32_t> DngVersionIn(IdentificationStream* stream, bool isBigEndian) {
  const auto word = [&] {
    return isBigEndian ? IdStreamGetWordBE(stream) : IdStreamGetWordLE(stream);
  };
  const int32_t count = word();
  for (int32_t i = 0; i < count && static_cast<uint32_t>(i) < kMaxEntries; ++i) {
    const int32_t tag = word();
    const int32_t type = word();
    uint32_t values = 0;
    const int32_t read =
        isBigEndian ? IdStreamGetDwordBE(stream, &values) : IdStreamGetDwordLE(stream, &values);
    uint32_t value = 0;
    if (read != 0 || IdStreamGetDwordBE(stream, &value) != 0) return std::nullopt;
    if (tag == kDngVersion && type == kBytes && values == 4) return value;
  }
  return std::nullopt;
}

}  // namespace

void ReadTiffProperties(const PropertyQuestion& question, PropertySet& out) {
  constexpr uint32_t kMark = 42;
  constexpr uint32_t kBigMark = 43;
  const FileBytes<8> head(question.stream, 0);
  const bool isBigEndian = head.Holds(0, "MM");
  if (!isBigEndian && !head.Holds(0, "II")) return;
  out.Set(Property::kByteOrder, isBigEndian ? "big-endian" : "little-endian", "header", 0);
  const uint32_t mark = isBigEndian ? head.WordBE(2) : head.WordLE(2);
  if (mark == kBigMark) return out.Set(Property::kProfile, "BigTIFF", "header", 2);
  if (mark != kMark) return;
  const uint32_t offset = isBigEndian ? head.DwordBE(4) : head.DwordLE(4);
  if (IdStreamSeek(question.stream, offset, kIoFromStart) != 0) return;
  const std::optional<uint32_t> dng = DngVersionIn(question.stream, isBigEndian);
  if (!dng.has_value()) return;
  ShortText version;
  for (int shift = 24; shift >= 0; shift -= 8) {
    if (shift < 24) version.Append(".");
    version.AppendNumber(*dng >> shift & 0xFF);
  }
  out.Set(Property::kProfile, "DNG", "first directory", offset);
  out.Set(Property::kVersion, version.view(), "first directory", offset);
}

}  // namespace fi
