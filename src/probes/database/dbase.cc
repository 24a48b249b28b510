#include "probes/database/dbase.h"

#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr size_t kFieldOffset = 32;
constexpr size_t kNameSize = 11;                          // its NUL included
constexpr size_t kTypeOffset = kFieldOffset + kNameSize;  // of the first field
constexpr uint32_t kShortestHeader = 65;                  // one field, and a byte behind the last

constexpr std::string_view kVersions =
    "\x02\x03\x04\x05\x30\x31\x32\x43\x63\x7B\x83\x8B\x8C\x8E\xCB\xE5\xF5\xFB";
constexpr std::string_view kFieldTypes = "CDFGILMNOPQTVWYB@+";

// dBASE II has a header of its own: number of records, date, size of a record, and then fields.
constexpr char kVersion2 = '\x02';
constexpr size_t kFieldOffset2 = 8;
constexpr uint32_t kHeaderSize2 = 521;
constexpr uint32_t kLongestRecord2 = 1000;

// dBASE 7, whose version is 4, has longer names behind a longer header; properties of the fields
// may follow them.
constexpr uint8_t kVersion7 = 4;
constexpr size_t kFieldOffset7 = 68;
constexpr size_t kNameSize7 = 32;
constexpr size_t kTypeOffset7 = kFieldOffset7 + kNameSize7;
constexpr uint32_t kShortestHeader7 = 117;

using Header = FileBytes<kTypeOffset7 + 1>;

// Letters of a code page count.
bool IsLetterOrAboveAscii(uint8_t byte) {
  return ((byte | 0x20) >= 'a' && (byte | 0x20) <= 'z') || byte >= 0x80;
}

bool IsField(const Header& header, size_t at, size_t nameSize) {
  if (!header.Has(at, nameSize + 1)) return false;
  const std::string_view name = header.View().substr(at, nameSize);
  const size_t length = name.find('\0');
  if (length == 0 || length == std::string_view::npos) return false;
  for (size_t i = 0; i < length; ++i) {
    const auto byte = static_cast<uint8_t>(name[i]);
    const bool isDigit = byte >= '0' && byte <= '9';
    // Names of dBASE II have colons where later ones have low lines.
    if (!IsLetterOrAboveAscii(byte) && (i == 0 || (!isDigit && byte != '_' && byte != ':')))
      return false;
  }
  const char type = header.View()[at + nameSize];
  return kFieldTypes.find(type) != std::string_view::npos;
}

bool IsVersion2(const Header& header, uint64_t fileSize) {
  const uint32_t record = header.WordLE(6);
  return record >= 2 && record <= kLongestRecord2 && IsField(header, kFieldOffset2, kNameSize) &&
         kHeaderSize2 + uint64_t{header.WordLE(1)} * record <= fileSize;
}

// Tables of FoxPro have 263 bytes for the name of their database behind the fields.
bool HasFields(const Header& header) {
  const uint32_t size = header.WordLE(8);
  if ((header.Byte(0) & 7) == kVersion7 && size >= kShortestHeader7 &&
      IsField(header, kFieldOffset7, kNameSize7)) {
    return true;
  }
  return size >= kShortestHeader && (size % 32 == 1 || size % 32 == 8) &&
         IsField(header, kFieldOffset, kNameSize);
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
  const uint32_t record = header.WordLE(10);
  if (record < 2 || !HasFields(header)) return kNoMatch;
  // The byte behind the last record may be missing.
  const uint64_t needed = header.WordLE(8) + uint64_t{header.DwordLE(4)} * record;
  return needed <= FileSize(stream) + 1 ? kFormatDbase : kNoMatch;
}

}  // namespace fi
