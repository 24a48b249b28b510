#include "toolkit/text/delimited_records.h"

#include "stream/text_view.h"

namespace fi {
namespace {

struct Record {
  bool blank = true;  // nothing but blanks
  bool complete = false;
  uint32_t delimiters = 0;
  uint32_t spaced = 0;
  bool badQuote = false;
  int32_t open = 0;    // brackets that its fields so far left open
  bool spans = false;  // a later field closed one
  bool emptyFirst = false;
  bool emptyLast = false;
};

// Takes records off the front of a text.
class RecordReader {
 public:
  RecordReader(std::string_view text, char delimiter, bool cut)
      : text_(text), delimiter_(delimiter), cut_(cut) {}

  bool AtEnd() const { return pos_ == text_.size(); }

  // Whether the record ahead is a comment, or names the delimiter for a spreadsheet ("sep=;").
  bool AtComment() const {
    const std::string_view rest = text_.substr(pos_);
    return rest.front() == '#' || (pos_ == 0 && rest.substr(0, 4) == "sep=");
  }

  Record Next();

 private:
  // A field and the delimiter or line end behind it. Answers whether another field follows.
  bool ReadField(Record& record);
  // A field in quotes. Stays where it is when the quotes do not close as they should.
  void ReadQuoted(Record& record);
  // Up to the end of the field; the brackets that stay open.
  int32_t ReadPlain();
  bool EndsField(char c) const { return (c == delimiter_ && !IsClockFraction()) || IsLineEnd(c); }
  // Whether the comma at the position stands between the seconds of a time of day and their
  // thousandths, as logs and subtitles write it: "12:30:59,123".
  bool IsClockFraction() const;

  const std::string_view text_;
  const char delimiter_;
  const bool cut_;
  size_t pos_ = 0;
};

bool RecordReader::IsClockFraction() const {
  constexpr size_t kBefore = 3;  // ":59"
  constexpr size_t kBehind = 5;  // ",123 "
  if (delimiter_ != ',' || pos_ < kBefore || text_.size() - pos_ < kBehind) return false;
  const auto digit = [this](size_t at) { return text_[at] >= '0' && text_[at] <= '9'; };
  return text_[pos_ - 3] == ':' && digit(pos_ - 2) && digit(pos_ - 1) && digit(pos_ + 1) &&
         digit(pos_ + 2) && digit(pos_ + 3) && IsSpaceOrTab(text_[pos_ + 4]);
}

void RecordReader::ReadQuoted(Record& record) {
  const size_t start = pos_++;
  while (!AtEnd()) {
    if (text_[pos_++] != '"') continue;
    if (AtEnd() || EndsField(text_[pos_])) return;
    if (text_[pos_] != '"') break;
    ++pos_;
  }
  if (AtEnd() && cut_) return;
  // Not a quoted field after all: it is read again as a plain one.
  record.badQuote = true;
  pos_ = start;
}

int32_t RecordReader::ReadPlain() {
  int32_t open = 0;
  for (; !AtEnd() && !EndsField(text_[pos_]); ++pos_) {
    const char c = text_[pos_];
    if (c == '(' || c == '[' || c == '{') ++open;
    if (c == ')' || c == ']' || c == '}') --open;
  }
  return open;
}

bool RecordReader::ReadField(Record& record) {
  const size_t start = pos_;
  if (!AtEnd() && text_[pos_] == '"') ReadQuoted(record);
  const bool plain = pos_ == start;
  if (plain) {
    const int32_t open = ReadPlain();
    if (record.open > 0 && open < 0) record.spans = true;
    record.open += open;
  }
  const std::string_view field = text_.substr(start, pos_ - start);
  if (field.find_first_not_of(" \t") != std::string_view::npos) record.blank = false;
  const bool empty = field.empty();
  if (record.delimiters == 0) record.emptyFirst = empty;
  record.emptyLast = empty;
  if (AtEnd()) return false;
  const char end = text_[pos_++];
  if (!IsLineEnd(end)) {
    record.blank = false;
    ++record.delimiters;
    if (!AtEnd() && IsSpaceOrTab(text_[pos_]) && text_[pos_] != delimiter_) ++record.spaced;
    return true;
  }
  if (end == '\r' && !AtEnd() && text_[pos_] == '\n') ++pos_;
  record.complete = true;
  return false;
}

Record RecordReader::Next() {
  Record record;
  while (ReadField(record)) {
  }
  return record;
}

}  // namespace

bool IsHopeless(const DelimitedTally& tally) {
  // Exceptions that may come first: twice the share that is allowed in the end, and a few.
  constexpr uint32_t kEarly = 4;
  constexpr uint32_t kRecordsPerException = 8;
  if (tally.records >= 1 && tally.head == 0) return true;
  // A header may lack the name of the column that names the rows.
  if (tally.records >= 2 && tally.head != tally.delimiters && tally.head + 1 != tally.delimiters) {
    return true;
  }
  return tally.exceptions > kEarly + tally.records / kRecordsPerException;
}

DelimitedTally TallyRecords(std::string_view text, char delimiter, bool cut) {
  DelimitedTally tally;
  const bool drawsLines = delimiter == '\t' || delimiter == '|';
  RecordReader reader(text, delimiter, cut);
  while (!reader.AtEnd()) {
    const bool comment = reader.AtComment();
    const Record record = reader.Next();
    if (comment || record.blank || (cut && !record.complete)) continue;
    ++tally.records;
    if (tally.records == 1) tally.head = record.delimiters;
    if (tally.records == 2) tally.delimiters = record.delimiters;
    if (tally.records > 1 && record.delimiters != tally.delimiters) ++tally.exceptions;
    if (record.badQuote) ++tally.badQuotes;
    if (record.spans) ++tally.spanned;
    if (record.delimiters != 0 && record.spaced * 2 >= record.delimiters) ++tally.spaced;
    if (record.emptyFirst && drawsLines) ++tally.emptyFirst;
    if (record.emptyLast) ++tally.emptyLast;
    if (IsHopeless(tally)) break;
  }
  return tally;
}

bool IsTable(const DelimitedTally& tally) {
  constexpr uint32_t kRecordsPerException = 16;
  const uint32_t allowed = tally.records / kRecordsPerException;
  if (tally.records < 2 || IsHopeless(tally)) return false;
  if (tally.exceptions > allowed || tally.badQuotes > allowed) return false;
  // Calls, arrays and objects of code.
  if (tally.spanned * 4 >= tally.records) return false;
  // Indented lines and drawn tables begin with the delimiter.
  if (tally.emptyFirst * 4 >= tally.records * 3) return false;
  // A list or code whose lines the character ends.
  if (tally.delimiters == 1 && tally.emptyLast * 2 >= tally.records) return false;
  // Sentences.
  constexpr uint32_t kEnoughSpaced = 4;
  return tally.spaced * 2 < tally.records ||
         (tally.delimiters >= 2 && tally.records >= kEnoughSpaced);
}

}  // namespace fi
