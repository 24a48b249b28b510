#include "probes/font/sfnt.h"

#include <iterator>
#include <string_view>

#include "formatid/io.h"

namespace fi {
namespace {

constexpr uint32_t kCountOffset = 4;
constexpr uint32_t kDirectoryOffset = 12;
constexpr uint32_t kRecordSize = 16;

// Deliberate: a directory must list these three tables in this order (the order of their tags) to
// count as a font.
constexpr std::string_view kTags[] = {"head", "hhea", "name"};

enum class Record : uint8_t { kWanted, kOther, kMissing };

// Reads the tag of a record, as far as it agrees with `tag`.
Record ReadTag(IdentificationStream* stream, std::string_view tag) {
  for (const char letter : tag) {
    const uint32_t byte = IdStreamGetByte(stream);
    if (byte == kEndOfData) return Record::kMissing;
    if (byte != static_cast<uint8_t>(letter)) return Record::kOther;
  }
  return Record::kWanted;
}

}  // namespace

bool SfntDirectoryProbe(IdentificationStream* stream, uint32_t base) {
  if (IdStreamSeek(stream, int64_t{base} + kCountOffset, kIoFromStart) != 0) return false;
  const int32_t count = IdStreamGetWordBE(stream);
  int64_t position = int64_t{base} + kDirectoryOffset;
  size_t found = 0;
  // At most 65535 records, and none beyond the end of the file.
  for (int32_t i = 0; i < count; ++i) {
    if (IdStreamSeek(stream, position, kIoFromStart) != 0) return false;
    const Record record = ReadTag(stream, kTags[found]);
    if (record == Record::kMissing) return false;
    if (record == Record::kWanted && ++found == std::size(kTags)) return true;
    position += kRecordSize;
  }
  return false;
}

}  // namespace fi
