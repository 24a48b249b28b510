#include "probes/storage/message_class.h"

#include <array>
#include <string>
#include <string_view>

#include "platform/format_ids.h"
#include "probes/storage/child_stream.h"

namespace fi {
namespace {

struct ClassRow {
  std::string_view prefix;
  FormatId message;
  FormatId itemTemplate;
};

// First match wins: the signed class stands before the one that it begins with.
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

// The class as 8-bit text, else as UTF-16.
io::OwnedHandle OpenMessageClass(IOHandle* document) {
  io::OwnedHandle narrow = OpenChild(document, kIoSourceStorageStream, "__substg1.0_001A001E");
  if (narrow != nullptr) return narrow;
  return OpenChild(document, kIoSourceStorageStream, "__substg1.0_001A001F");
}

}  // namespace

FormatId MapMessageClass(IdentificationStream* stream, FormatId baseId) {
  const bool isMessage = baseId == kFormatOutlookMessage;
  const FormatId otherwise = isMessage ? kFormatOutlookMessage : kFormatOutlookItemTemplate;
  const io::OwnedHandle child = OpenMessageClass(stream->handle);
  if (child == nullptr) return otherwise;
  const std::string text = ReadClass(child.get());
  for (const ClassRow& row : kClasses) {
    if (text.starts_with(row.prefix)) return isMessage ? row.message : row.itemTemplate;
  }
  return otherwise;
}

}  // namespace fi
