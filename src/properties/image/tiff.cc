#include "properties/image/tiff.h"

#include <iterator>
#include <string_view>

#include "properties/record/short_text.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

// Entries of the first directory that are looked at. Real directories hold some tens.
constexpr uint32_t kMaxEntries = 256;

// Tags that make a TIFF file one of another kind, the more specific first.
constexpr struct {
  uint16_t tag;
  std::string_view profile;
} kKinds[] = {
    {50706, "DNG"},      // DNGVersion
    {37398, "TIFF/EP"},  // TIFF/EPStandardID
    {33421, "CFA"},      // CFARepeatPatternDim: the picture of a camera's sensor
    {34735, "GeoTIFF"},  // GeoKeyDirectory
    {34665, "Exif"},     // Exif IFD
};

class Directory {
 public:
  // Reads the entries at the stream's position.
  Directory(IdentificationStream* stream, bool isBigEndian) {
    const auto word = [&] {
      return isBigEndian ? IdStreamGetWordBE(stream) : IdStreamGetWordLE(stream);
    };
    const int32_t count = word();
    isReadable_ = count > 0;
    for (int32_t i = 0; i < count && static_cast<uint32_t>(i) < kMaxEntries; ++i) {
      const int32_t tag = word();
      uint32_t value = 0;
      if (tag < 0 || IdStreamSkip(6, stream) != 0 || IdStreamGetDwordBE(stream, &value) != 0) {
        isReadable_ = i > 0;
        return;
      }
      Take(static_cast<uint16_t>(tag), value);
    }
  }

  bool isReadable() const { return isReadable_; }
  // Empty for plain TIFF.
  std::string_view profile() const {
    return rank_ < std::size(kKinds) ? kKinds[rank_].profile : "";
  }
  // The four bytes of DNGVersion.
  uint32_t dngVersion() const { return dngVersion_; }

 private:
  void Take(uint16_t tag, uint32_t value) {
    for (size_t i = 0; i < rank_; ++i) {
      if (kKinds[i].tag == tag) rank_ = i;
    }
    if (tag == kKinds[0].tag) dngVersion_ = value;
  }

  bool isReadable_ = false;
  size_t rank_ = std::size(kKinds);
  uint32_t dngVersion_ = 0;
};

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
  const Directory directory(question.stream, isBigEndian);
  constexpr uint32_t kHeaderSize = 8;
  if (offset < kHeaderSize || !directory.isReadable()) {
    return out.Set(Property::kDamaged, "first directory", "header", 4);
  }
  out.Set(Property::kProfile, directory.profile(), "first directory", offset);
  if (directory.profile() != "DNG") return;
  ShortText version;
  for (int shift = 24; shift >= 0; shift -= 8) {
    if (shift < 24) version.Append(".");
    version.AppendNumber(directory.dngVersion() >> shift & 0xFF);
  }
  out.Set(Property::kVersion, version.view(), "first directory", offset);
}

}  // namespace fi
