// The records of a ZIP file, as PKWARE's APPNOTE.TXT lays them out: signatures, sizes of their
// fixed parts and offsets of the fields that are read. Numbers are little-endian.
#ifndef FI_TOOLKIT_ZIP_RECORDS_H_
#define FI_TOOLKIT_ZIP_RECORDS_H_

#include <cstdint>

#include "toolkit/memory/little_endian.h"

namespace fi::zip {

// A number that stands elsewhere, in a field of ZIP64.
inline constexpr uint16_t kElsewhere16 = 0xFFFF;
inline constexpr uint32_t kElsewhere32 = 0xFFFFFFFF;

// In front of a member's data, followed by name and extra fields.
namespace local {
inline constexpr uint32_t kSignature = 0x04034B50;
inline constexpr uint32_t kSize = 30;
inline constexpr uint32_t kFlags = 6;
inline constexpr uint32_t kMethod = 8;
inline constexpr uint32_t kPackedSize = 18;
inline constexpr uint32_t kMemberSize = 22;
inline constexpr uint32_t kNameLength = 26;
inline constexpr uint32_t kExtraLength = 28;
}  // namespace local

// Behind a member's data: checksum and sizes, which are wide in ZIP64. The signature is optional.
namespace descriptor {
inline constexpr uint32_t kSignature = 0x08074B50;
inline constexpr uint32_t kSize = 16;
inline constexpr uint32_t kWideSize = 24;
inline constexpr uint32_t kPackedSize = 8;
}  // namespace descriptor

// An entry of the central directory, followed by name, extra fields and comment.
namespace central {
inline constexpr uint32_t kSignature = 0x02014B50;
inline constexpr uint32_t kSize = 46;
inline constexpr uint32_t kFlags = 8;
inline constexpr uint32_t kMethod = 10;
inline constexpr uint32_t kPackedSize = 20;
inline constexpr uint32_t kMemberSize = 24;
inline constexpr uint32_t kNameLength = 28;
inline constexpr uint32_t kExtraLength = 30;
inline constexpr uint32_t kCommentLength = 32;
inline constexpr uint32_t kLocalOffset = 42;
}  // namespace central

// The end record, followed by the comment.
namespace end {
inline constexpr uint32_t kSignature = 0x06054B50;
inline constexpr uint32_t kSize = 22;
inline constexpr uint32_t kCount = 10;
inline constexpr uint32_t kDirectorySize = 12;
inline constexpr uint32_t kDirectoryOffset = 16;
inline constexpr uint32_t kCommentLength = 20;
}  // namespace end

// ZIP64: its locator stands right in front of the end record and tells where its end record is.
namespace locator {
inline constexpr uint32_t kSignature = 0x07064B50;
inline constexpr uint32_t kSize = 20;
inline constexpr uint32_t kEndOffset = 8;
}  // namespace locator
namespace end64 {
inline constexpr uint32_t kSignature = 0x06064B50;
inline constexpr uint32_t kSize = 56;
inline constexpr uint32_t kCount = 32;
inline constexpr uint32_t kDirectorySize = 40;
inline constexpr uint32_t kDirectoryOffset = 48;
}  // namespace end64

// The extra field with those of an entry's size, packed size and offset that are elsewhere.
inline constexpr uint16_t kWideExtra = 1;

// General-purpose flags.
inline constexpr uint16_t kEncrypted = 1;
inline constexpr uint16_t kSizesBehind = 8;  // in a descriptor behind the data

// Methods.
inline constexpr uint16_t kStored = 0;
inline constexpr uint16_t kDeflated = 8;

}  // namespace fi::zip

#endif  // FI_TOOLKIT_ZIP_RECORDS_H_
