#include "probes/database/paradox.h"

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {

FormatId ParadoxProbe(IdentificationStream* stream) {
  constexpr uint32_t kLongestRecord = 10800;
  constexpr uint32_t kHeaderSize = 2048;
  constexpr uint32_t kLargestBlock = 32;  // KB
  constexpr uint32_t kMaxFields = 255;
  constexpr uint32_t kOldestVersion = 3;
  constexpr uint32_t kNewestVersion = 12;
  const FileBytes<58> header(stream, 0);
  if (header.size() < 58 || header.WordLE(2) != kHeaderSize) return kNoMatch;
  const uint32_t record = header.WordLE(0);
  const uint32_t type = header.Byte(4);  // with and without a primary key
  if (record == 0 || record > kLongestRecord || (type != 0 && type != 2)) return kNoMatch;
  const uint32_t block = header.Byte(5);
  if (block == 0 || block > kLargestBlock) return kNoMatch;
  const uint32_t fields = header.WordLE(33);
  if (fields == 0 || fields > kMaxFields) return kNoMatch;
  if (header.Byte(57) < kOldestVersion || header.Byte(57) > kNewestVersion) return kNoMatch;
  const uint64_t size = FileSize(stream);
  const bool matches = size >= kHeaderSize && (size - kHeaderSize) % (uint64_t{block} * 1024) == 0;
  return matches ? kFormatParadoxTable : kNoMatch;
}

}  // namespace fi
