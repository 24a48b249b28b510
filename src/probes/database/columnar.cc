#include "probes/database/columnar.h"

#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr size_t kLongestMark = 8;

bool BeginsWith(IdentificationStream* stream, std::string_view mark) {
  return FileBytes<kLongestMark>(stream, 0).Holds(0, mark);
}

// Whether `mark` stands `distance` bytes before the end, and not within the first one of the file.
bool EndsWith(IdentificationStream* stream, std::string_view mark, uint64_t distance) {
  const uint64_t size = FileSize(stream);
  if (size < distance + kLongestMark) return false;
  return FileBytes<kLongestMark>(stream, static_cast<int64_t>(size - distance)).Holds(0, mark);
}

}  // namespace

FormatId ParquetProbe(IdentificationStream* stream) {
  const bool matches = BeginsWith(stream, "PAR1") && EndsWith(stream, "PAR1", 4);
  return matches ? kFormatApacheParquet : kNoMatch;
}

FormatId OrcProbe(IdentificationStream* stream) {
  // The length of the postscript stands behind the mark.
  const bool matches = BeginsWith(stream, "ORC") && EndsWith(stream, "ORC", 4);
  return matches ? kFormatApacheOrc : kNoMatch;
}

FormatId AvroProbe(IdentificationStream* stream) {
  constexpr size_t kMetadata = 512;
  const FileBytes<kMetadata> head(stream, 0);
  const bool matches =
      head.Holds(0, "Obj\x01") && (head.View().find("avro.schema") != std::string_view::npos ||
                                   head.View().find("avro.codec") != std::string_view::npos);
  return matches ? kFormatApacheAvro : kNoMatch;
}

FormatId ArrowProbe(IdentificationStream* stream) {
  const bool matches = BeginsWith(stream, std::string_view("ARROW1\0\0", kLongestMark)) &&
                       EndsWith(stream, "ARROW1", 6);
  return matches ? kFormatApacheArrow : kNoMatch;
}

}  // namespace fi
