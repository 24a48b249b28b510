#include "properties/image/jpeg.h"

#include <array>
#include <string_view>

#include "properties/record/short_text.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

using namespace std::string_view_literals;

// Segments before the picture. Programs write some ten.
constexpr uint32_t kMaxSegments = 64;

constexpr uint32_t kApp0 = 0xE0;
constexpr uint32_t kApp1 = 0xE1;
constexpr uint32_t kApp8 = 0xE8;
constexpr uint32_t kStartOfScan = 0xDA;

using Segment = FileBytes<4096>;

// JFIF and SPIFF write a major and a minor number; JFIF shows the minor one in two digits.
void SetVersion(std::string_view profile, uint32_t major, uint32_t minor, bool twoDigits,
                int64_t offset, PropertySet& out) {
  ShortText version;
  version.AppendNumber(major);
  version.Append(twoDigits && minor < 10 ? ".0" : ".");
  version.AppendNumber(minor);
  out.Set(Property::kProfile, profile, "application segment", offset);
  out.Set(Property::kVersion, version.view(), "application segment", offset);
}

// The tag ExifVersion holds four digits, "0230" for 2.3. It stands in the Exif directory, which a
// tag of the first directory points to. All within the segment.
std::string_view ExifVersion(const Segment& segment, std::array<char, 4>& digits) {
  constexpr size_t kTiff = 10;  // behind marker, length and "Exif\0\0"
  constexpr uint32_t kExifDirectory = 0x8769;
  constexpr uint32_t kExifVersion = 0x9000;
  constexpr size_t kEntrySize = 12;
  const bool isBigEndian = segment.Holds(kTiff, "MM");
  const auto word = [&](size_t at) {
    return isBigEndian ? segment.WordBE(at) : segment.WordLE(at);
  };
  const auto dword = [&](size_t at) {
    return isBigEndian ? segment.DwordBE(at) : segment.DwordLE(at);
  };
  uint32_t directory = dword(kTiff + 4);
  for (int level = 0; level < 2; ++level) {
    const size_t start = kTiff + size_t{directory};
    const uint32_t count = word(start);
    const uint32_t wanted = level == 0 ? kExifDirectory : kExifVersion;
    uint32_t found = 0;
    for (uint32_t i = 0; i < count; ++i) {
      const size_t entry = start + 2 + i * kEntrySize;
      if (!segment.Has(entry, kEntrySize)) return {};
      if (word(entry) != wanted) continue;
      if (level == 1) {
        segment.View().substr(entry + 8, 4).copy(digits.data(), digits.size());
        return {digits.data(), digits.size()};
      }
      found = dword(entry + 8);
    }
    if (found == 0) return {};
    directory = found;
  }
  return {};
}

void ReadExif(const Segment& segment, int64_t offset, PropertySet& out) {
  std::array<char, 4> digits{};
  const std::string_view version = ExifVersion(segment, digits);
  out.Set(Property::kProfile, "Exif", "application segment", offset);
  if (version.size() != 4 || version.find_first_not_of("0123456789") != std::string_view::npos) {
    return;
  }
  ShortText text;
  text.AppendNumber(static_cast<uint64_t>((version[0] - '0') * 10 + version[1] - '0'));
  text.Append(".");
  text.Append(version.substr(2, version[3] == '0' ? 1 : 2));
  out.Set(Property::kVersion, text.view(), "application segment", offset);
}

// True when the segment tells the kind of file.
bool ReadSegment(uint32_t marker, const Segment& segment, int64_t offset, PropertySet& out) {
  if (marker == kApp0 && segment.Holds(4, "JFIF\0"sv)) {
    SetVersion("JFIF", segment.Byte(9), segment.Byte(10), true, offset, out);
    return true;
  }
  if (marker == kApp1 && segment.Holds(4, "Exif\0"sv)) {
    ReadExif(segment, offset, out);
    return true;
  }
  if (marker == kApp8 && segment.Holds(4, "SPIFF\0"sv)) {
    SetVersion("SPIFF", segment.Byte(10), segment.Byte(11), false, offset, out);
    return true;
  }
  return false;
}

}  // namespace

void ReadJpegProperties(const PropertyQuestion& question, PropertySet& out) {
  int64_t offset = 2;
  for (uint32_t count = 0; count < kMaxSegments; ++count) {
    const FileBytes<4> head(question.stream, offset);
    const uint32_t marker = head.Byte(1);
    if (head.Byte(0) != 0xFF || marker == kStartOfScan || !head.Has(0, 4)) return;
    const bool mayTell = marker == kApp0 || marker == kApp1 || marker == kApp8;
    if (mayTell && ReadSegment(marker, Segment(question.stream, offset), offset, out)) return;
    const uint32_t length = head.WordBE(2);
    if (length < 2) return;
    offset += 2 + int64_t{length};
  }
}

}  // namespace fi
