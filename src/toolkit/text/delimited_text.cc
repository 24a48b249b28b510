// Delimited text as RFC 4180 writes it, with any of four delimiters: records of the same number of
// fields, one a line, where a quoted field may hold delimiters and line ends. There is no
// signature, so the records must agree. Texts that agree by chance (sentences, code, lists, logs)
// are ruled out by the look of their fields. docs/text.md has the figures.
#include "platform/delimited_text.h"

#include "stream/id_stream.h"
#include "toolkit/text/delimited_records.h"
#include "toolkit/text/text_window.h"

namespace {

struct Kind {
  char delimiter;
  FormatId id;
};

// The earlier wins where both divide the records, unless the later does so into at least two fields
// more: a table of decimal commas has one comma more than it has semicolons.
constexpr Kind kKinds[] = {{'\t', 3211}, {';', 3212}, {'|', 3213}, {',', 3204}};

// Its delimiters and line ends are other bytes, and files of it have records of fixed length.
constexpr FormatId kEbcdicText = 1184;

// Records in which a decision rests on more than chance; with fewer, more of the file is read.
constexpr uint32_t kEnoughRecords = 8;

// Bytes read at first, enough for most tables, and at most.
constexpr uint32_t kFirstWindow = 8 * 1024;
constexpr uint32_t kLastWindow = 64 * 1024;

struct Finding {
  FormatId id = 0;   // 0: not delimited
  bool few = false;  // a delimiter may still win with more records
};

Finding Examine(const fi::TextWindow& window) {
  Finding finding;
  uint32_t delimiters = 0;
  for (const Kind& kind : kKinds) {
    const fi::DelimitedTally tally = fi::TallyRecords(window.text, kind.delimiter, window.cut);
    if (fi::IsTable(tally)) {
      if (finding.id == 0 || tally.delimiters > delimiters + 1) {
        finding.id = kind.id;
        delimiters = tally.delimiters;
      }
      continue;
    }
    finding.few |= tally.records < kEnoughRecords && !fi::IsHopeless(tally);
  }
  return finding;
}

}  // namespace

uint32_t InitCSV(CsvSniffer* sniffer, fi::IdentificationStream* stream, FormatId id) noexcept {
  *sniffer = {stream, id};
  return 0;
}

uint32_t IsCSV(CsvSniffer* sniffer) noexcept {
  if (sniffer->id == kEbcdicText) return 0;
  for (const uint32_t size : {kFirstWindow, kLastWindow}) {
    fi::TextBuffer buffer;
    const fi::TextWindow window = buffer.Read(sniffer->stream->handle, sniffer->id, size);
    const Finding finding = Examine(window);
    if (finding.id != 0) {
      sniffer->id = finding.id;
      return 1;
    }
    if (!window.cut || !finding.few) return 0;
  }
  return 0;
}

void DeinitCSV(CsvSniffer* /*sniffer*/) noexcept {}
