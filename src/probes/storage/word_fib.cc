#include "probes/storage/word_fib.h"

#include <array>
#include <optional>
#include <string_view>

#include "probes/protection/rights_management.h"
#include "registry/format_ids.h"
#include "stream/child_stream.h"

namespace fi {
namespace {

// The stream holds a property set: a 28-byte header that begins with a byte-order mark and a format
// version, then 20 bytes for each section, the last four of which are its offset. A section begins
// with its size and the number of its properties; the table of the properties follows, with eight
// bytes for each: identifier, and offset from the section's start.
constexpr uint32_t kPropertySetMark = 0x0000FFFE;
constexpr uint32_t kSectionOffsetAt = 44;
constexpr uint32_t kApplicationName = 18;

// The table is counted in 16 bits: a count above this would not end before the data does.
constexpr uint32_t kMostProperties = 0xFFFF;

// Application names that are looked at; a document has one. Each can lie anywhere in the stream,
// and in a file of scattered sectors the way there can be long.
constexpr uint32_t kMostNames = 64;

// Behind a property's type and length (8 bytes) and the 15 characters "Microsoft Word " stands the
// version, or "for Windows 95".
constexpr uint32_t kVersionAt = 23;
constexpr size_t kVersionLength = 3;
constexpr size_t kPlatformAt = 12;
constexpr size_t kPlatformLength = 2;
constexpr size_t kVersionTextSize = kPlatformAt + kPlatformLength;

using VersionText = std::array<char, kVersionTextSize>;

// Reads at most the text's size at `offset` of the handle, which a stream over it may go on to use.
// Bytes past the end are zero.
VersionText ReadVersionText(IOHandle* handle, uint64_t offset) {
  VersionText text{};
  if (offset > UINT32_MAX || !io::Seek(handle, kIoFromStart, static_cast<uint32_t>(offset))) {
    return text;
  }
  for (uint32_t filled = 0; filled < text.size();) {
    const auto room = static_cast<uint32_t>(text.size()) - filled;
    const uint32_t count = io::Read(handle, text.data() + filled, room);
    if (count == 0) break;
    filled += count;
  }
  return text;
}

// By the product version in the file-information block, for an application whose name tells
// nothing; nullopt without such a block.
std::optional<FormatId> ByProductVersion(IOHandle* document) {
  const ChildStream child(document, "WordDocument");
  if (!child) return std::nullopt;
  (void)IdStreamSeek(child.get(), 4, kIoFromStart);
  const uint32_t low = IdStreamGetByte(child.get());
  const uint32_t high = IdStreamGetByte(child.get());
  // Deliberate: the end of data is not tested, so that a stream cut short counts as the latest.
  const auto version = static_cast<uint16_t>(low | high << 8);
  if (version >= 0x6000) return kFormatWord2003;
  if (version >= 0x4000) return kFormatWord2002;
  if (version >= 0x2000) return kFormatWord2000;
  return kFormatWord97;
}

// By the version in the application's name. kNoMatch leaves the answer to the file-information
// block; nullopt changes nothing.
std::optional<FormatId> ByApplicationName(const VersionText& text) {
  const std::string_view version(text.data(), kVersionLength);
  if (version == "6.0") return kFormatWord6Or95;
  if (version == "8.0") return kFormatWord97;
  if (version == "9.0") return kFormatWord2000;
  if (version == "10.") return kFormatWord2002;
  if (version == "11.") return kFormatWord2003;
  if (version != "for") return kNoMatch;
  const std::string_view platform(text.data() + kPlatformAt, kPlatformLength);
  return platform == "95" ? std::optional<FormatId>(kFormatWord6Or95) : std::nullopt;
}

// Finds the table of properties and leaves the stream there. False when the data ends before.
bool OpenSection(IdentificationStream* summary, uint32_t* section, uint32_t* count) {
  (void)IdStreamSeek(summary, kSectionOffsetAt, kIoFromStart);
  if (IdStreamGetDwordLE(summary, section) != 0) return false;
  // No stream goes that far; on a handle of 32-bit positions the place would wrap.
  if (*section > UINT32_MAX - 4) return false;
  (void)IdStreamSeek(summary, int64_t{*section} + 4, kIoFromStart);
  return IdStreamGetDwordLE(summary, count) == 0;
}

// Walks the properties of the summary information. The last name that tells something decides.
FormatId BySummary(IOHandle* document, IdentificationStream* summary) {
  uint32_t mark = 0;
  uint32_t section = 0;
  uint32_t count = 0;
  if (IdStreamGetDwordLE(summary, &mark) != 0) return kFormatWord97;
  if (mark != kPropertySetMark) return kFormatWord2000;
  if (!OpenSection(summary, &section, &count) || count > kMostProperties) return kFormatWord97;

  FormatId answer = kFormatWord2000;
  bool askBlock = false;
  uint32_t names = 0;
  for (uint32_t i = 0; i < count; ++i) {
    uint32_t property = 0;
    uint32_t offset = 0;
    if (IdStreamGetDwordLE(summary, &property) != 0) return kFormatWord97;
    if (IdStreamGetDwordLE(summary, &offset) != 0) return kFormatWord97;
    if (property != kApplicationName || ++names > kMostNames) continue;
    // Past the stream, whose buffer keeps the table.
    const uint64_t at = uint64_t{section} + offset + kVersionAt;
    const std::optional<FormatId> named = ByApplicationName(ReadVersionText(summary->handle, at));
    if (!named.has_value()) continue;
    askBlock = *named == kNoMatch;
    if (!askBlock) answer = *named;
  }
  return askBlock ? ByProductVersion(document).value_or(answer) : answer;
}

// Without summary information. A version outside the range of Word 6 and 95 tells nothing.
FormatId ByDocumentVersion(IdentificationStream* child) {
  constexpr int32_t kFirstWord6 = 101;
  constexpr int32_t kLastWord95 = 105;
  if (IdStreamGetWordLE(child) < 0) return kFormatWord2000;
  const int32_t version = IdStreamGetWordLE(child);
  return version >= kFirstWord6 && version <= kLastWord95 ? kFormatWord6Or95Bare : kFormatWord2000;
}

}  // namespace

FormatId ProbeWordFib(IdentificationStream* stream) {
  IOHandle* document = stream->handle;
  if (!IsStorage(document)) return kFormatWord2000;
  const ChildStream summary(document, "\005SummaryInformation");
  if (summary) return BySummary(document, summary.get());
  const ChildStream child(document, "WordDocument");
  if (child) return ByDocumentVersion(child.get());
  if (!HasStream(document, "EncryptedPackage")) return kFormatWord2000;
  return CheckRightsManagedTransform(stream) ? kFormatRightsManagedWordXmlDocument
                                             : kFormatEncryptedWordXmlDocument2007;
}

}  // namespace fi
