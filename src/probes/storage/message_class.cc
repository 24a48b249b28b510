#include "probes/storage/message_class.h"

#include <array>
#include <string>
#include <string_view>

#include "registry/format_ids.h"
#include "stream/child_stream.h"

namespace fi {
namespace {

struct ClassRow {
  std::string_view prefix;
  FormatId message;
  FormatId itemTemplate;
};

// First match wins, so a longer class stands before its prefix.
constexpr ClassRow kClasses[] = {
    {"IPM.CONTACT", kFormatOutlookContact, kFormatOutlookContactTemplate},
    {"IPM.APPOINTMENT", kFormatOutlookAppointment, kFormatOutlookAppointmentTemplate},
    {"IPM.SCHEDULE.MEETING", kFormatOutlookAppointment, kFormatOutlookAppointmentTemplate},
    {"IPM.OLE.CLASS", kFormatOutlookAppointment, kFormatOutlookAppointmentTemplate},
    {"IPM.NOTE.NDR", kFormatOutlookNonDeliveryReport, kFormatOutlookNonDeliveryReportTemplate},
    {"IPM.NOTE.SMIME.MULTIPARTSIGNED", kFormatOutlookSignedMessage,
     kFormatOutlookSignedMessageTemplate},
    {"IPM.NOTE.SMIME", kFormatOutlookSMimeMessage, kFormatOutlookSMimeMessageTemplate},
    {"IPM.ACTIVITY", kFormatOutlookJournalEntry, kFormatOutlookJournalEntryTemplate},
    {"IPM.DISTLIST", kFormatOutlookDistributionList, kFormatOutlookDistributionListTemplate},
    {"IPM.POST", kFormatOutlookPost, kFormatOutlookPostTemplate},
    {"IPM.STICKYNOTE", kFormatOutlookStickyNote, kFormatOutlookStickyNoteTemplate},
    {"IPM.TASK", kFormatOutlookTask, kFormatOutlookTaskTemplate},
    {"REPORT.IPM.NOTE.NDR", kFormatOutlookNonDeliveryReport,
     kFormatOutlookNonDeliveryReportTemplate},
};

// A class has at most 255 characters. More is read only where "0" fills the stream.
constexpr uint32_t kMostBytesRead = 64 * 1024;

// Characters of the text that are kept: as many as the longest prefix has.
constexpr size_t kTextSize = 30;
static_assert([] {
  size_t longest = 0;
  for (const ClassRow& row : kClasses) {
    if (row.prefix.size() > longest) longest = row.prefix.size();
  }
  return longest == kTextSize;
}());

constexpr char UpperCase(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// The start of the class, upper-cased.
// Deliberate: the digit "0" is dropped and nothing else, so that the zero bytes of a class in
// UTF-16 stay and keep every prefix from fitting.
std::string ReadClass(IOHandle* child) {
  std::string text;
  text.reserve(kTextSize);
  std::array<char, 256> block;
  (void)io::Seek(child, kIoFromStart, 0);
  for (uint32_t total = 0; total < kMostBytesRead;) {
    const uint32_t count = io::Read(child, block.data(), block.size());
    if (count == 0) break;
    for (const char c : std::string_view(block.data(), count)) {
      if (c == '0') continue;
      text.push_back(UpperCase(c));
      if (text.size() == kTextSize) return text;
    }
    total += count;
  }
  return text;
}

// The start of a class in UTF-16, upper-cased, up to the first character that is not Latin.
std::string ReadWideClass(IOHandle* child) {
  std::array<char, 2 * kTextSize> bytes{};
  uint32_t filled = 0;
  (void)io::Seek(child, kIoFromStart, 0);
  while (filled < bytes.size()) {
    const auto room = static_cast<uint32_t>(bytes.size()) - filled;
    const uint32_t count = io::Read(child, bytes.data() + filled, room);
    if (count == 0) break;
    filled += count;
  }
  std::string text;
  for (uint32_t at = 0; at + 1 < filled && bytes[at + 1] == 0; at += 2) {
    text.push_back(UpperCase(bytes[at]));
  }
  return text;
}

constexpr const char* kNarrowClass = "__substg1.0_001A001E";
constexpr const char* kWideClass = "__substg1.0_001A001F";

io::OwnedHandle OpenMessageClass(IOHandle* document) {
  io::OwnedHandle narrow = OpenChild(document, kIoSourceStorageStream, kNarrowClass);
  if (narrow != nullptr) return narrow;
  return OpenChild(document, kIoSourceStorageStream, kWideClass);
}

FormatId FormatOfClass(const std::string& text, bool isMessage) {
  for (const ClassRow& row : kClasses) {
    if (text.starts_with(row.prefix)) return isMessage ? row.message : row.itemTemplate;
  }
  return kNoMatch;
}

}  // namespace

FormatId MapMessageClass(IdentificationStream* stream, FormatId baseId) {
  const bool isMessage = baseId == kFormatOutlookMessage;
  const FormatId otherwise = isMessage ? kFormatOutlookMessage : kFormatOutlookItemTemplate;
  const io::OwnedHandle child = OpenMessageClass(stream->handle);
  if (child == nullptr) return otherwise;
  const FormatId id = FormatOfClass(ReadClass(child.get()), isMessage);
  return id != kNoMatch ? id : otherwise;
}

FormatId MapWideMessageClass(IdentificationStream* stream, FormatId baseId) {
  if (HasStream(stream->handle, kNarrowClass)) return kNoMatch;
  const io::OwnedHandle child = OpenChild(stream->handle, kIoSourceStorageStream, kWideClass);
  if (child == nullptr) return kNoMatch;
  return FormatOfClass(ReadWideClass(child.get()), baseId == kFormatOutlookMessage);
}

}  // namespace fi
