#include "properties/image/bitmap.h"

#include <string_view>

#include "stream/file_bytes.h"

namespace fi {
namespace {

// The size of the header behind the 14 bytes of the file header tells the version.
constexpr struct {
  uint32_t size;
  std::string_view version;
} kHeaders[] = {
    {12, "OS/2 1"},    {16, "OS/2 2"}, {40, "Windows 3"},  {52, "Windows 3"},
    {56, "Windows 3"}, {64, "OS/2 2"}, {108, "Windows 4"}, {124, "Windows 5"},
};

}  // namespace

void ReadBitmapProperties(const PropertyQuestion& question, PropertySet& out) {
  constexpr size_t kFileHeader = 14;
  constexpr size_t kCompression = kFileHeader + 16;
  constexpr uint32_t kBitFields = 3;  // which Windows NT brought to the header of version 3
  const FileBytes<34> head(question.stream, 0);
  if (!head.Holds(0, "BM") || !head.Has(kFileHeader, 4)) return;
  const uint32_t size = head.DwordLE(kFileHeader);
  for (const auto& header : kHeaders) {
    if (header.size != size) continue;
    const bool isNt = size == 40 && head.DwordLE(kCompression) == kBitFields;
    out.Set(Property::kVersion, isNt ? "Windows 3 NT" : header.version, "header", kFileHeader);
  }
}

}  // namespace fi
