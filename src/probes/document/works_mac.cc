#include "probes/document/works_mac.h"

#include <algorithm>
#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {

FormatId WorksMacProbe(IdentificationStream* stream) {
  constexpr size_t kHeaderSize = 256;
  constexpr uint8_t kVersion1 = 4;
  constexpr uint8_t kVersion2 = 8;
  const FileBytes<kHeaderSize> header(stream, 0);
  if (header.size() < kHeaderSize) return kNoMatch;
  if (header.Byte(3) != kVersion1 && header.Byte(3) != kVersion2) return kNoMatch;
  // Beside what the signature tests: disk images and sparse databases hold nothing more.
  const auto isZero = [](char byte) { return byte == 0; };
  const std::string_view bytes = header.View();
  const bool empty = std::all_of(bytes.begin() + 4, bytes.begin() + 16, isZero) &&
                     std::all_of(bytes.begin() + 32, bytes.end(), isZero);
  return empty ? kNoMatch : kFormatWorksSpreadsheetForMac;
}

}  // namespace fi
