#include "probes/database/dbase.h"

#include <string_view>

#include "platform/format_ids.h"
#include "probes/file_bytes.h"

namespace fi {
namespace {

constexpr size_t kFieldOffset = 32;
constexpr size_t kNameSize = 11;                          // its NUL included
constexpr size_t kTypeOffset = kFieldOffset + kNameSize;  // of the first field
constexpr uint32_t kShortestHeader = 65;                  // one field, and a byte behind the last

constexpr std::string_view kVersions =
    "\x02\x03\x04\x05\x30\x31\x32\x43\x63\x7B\x83\x8B\x8E\xCB\xE5\xF5\xFB";
constexpr std::string_view kFieldTypes = "CDFGILMNOPQTVWYB@+";

// dBASE II has a header of its own: number of records, date, size of a record, and then fields.
constexpr char kVersion2 = '\x02';
constexpr size_t kFieldOffset2 = 8;
constexpr uint32_t kHeaderSize2 = 521;
constexpr uint32_t kLongestRecord2 = 1000;

using Header = FileBytes<kTypeOffset + 1>;

// Letters of a code page count.
bool IsLetter(uint8_t byte) {
  return ((byte | 0x20) >= 'a' && (byte | 0x20) <= 'z') || byte >= 0x80;
}

bool IsField(const Header& header, size_t at) {
  const std::string_view name = header.View().substr(at, kNameSize);
  const size_t length = name.find('\0');
  if (length == 0 || length == std::string_view::npos) return false;
  for (size_t i = 0; i < length; ++i) {
    const auto byte = static_cast<uint8_t>(name[i]);
    const bool isDigit = byte >= '0' && byte <= '9';
    if (!IsLetter(byte) && (i == 0 || (!isDigit && byte != '_'))) return false;
  }
  const char type = header.View()[at + kNameSize];
  return kFieldTypes.find(type) != std::string_view::npos;
}

bool IsVersion2(const Header& header, uint64_t fileSize) {
  const uint32_t record = header.WordLE(6);
  return record >= 2 && record <= kLongestRecord2 && IsField(header, kFieldOffset2) &&
         kHeaderSize2 + uint64_t{header.WordLE(1)} * record <= fileSize;
}

}  // namespace

FormatId DbaseProbe(IdentificationStream* stream) {
  const Header header(stream, 0);
  if (header.size() <= kTypeOffset) return kNoMatch;
  if (kVersions.find(header.View()[0]) == std::string_view::npos) return kNoMatch;
  if (header.View()[0] == kVersion2) {
    return IsVersion2(header, FileSize(stream)) ? kFormatDbase : kNoMatch;
  }
  const uint32_t month = header.Byte(2);
  const uint32_t day = header.Byte(3);
  if (month < 1 || month > 12 || day < 1 || day > 31) return kNoMatch;
  // Tables of FoxPro have 263 bytes for the name of their database behind the fields.
  const uint32_t size = header.WordLE(8);
  const uint32_t record = header.WordLE(10);
  if (size < kShortestHeader || record < 2) return kNoMatch;
  if (size % 32 != 1 && size % 32 != 8) return kNoMatch;
  if (!IsField(header, kFieldOffset)) return kNoMatch;
  // The byte behind the last record may be missing.
  const uint64_t needed = size + uint64_t{header.DwordLE(4)} * record;
  return needed <= FileSize(stream) + 1 ? kFormatDbase : kNoMatch;
}

}  // namespace fi
