#include "properties/pdf/pdf_file.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>
#include <optional>

#include "formatid/io.h"
#include "platform/inflate.h"
#include "properties/pdf/pdf_syntax.h"
#include "stream/file_bytes.h"

namespace fi::pdf {
namespace {

// Sections that an update appends one behind the other. A chain that turns back ends there too.
constexpr uint32_t kMaxSections = 64;

// Subsections of one table.
constexpr uint32_t kMaxSubsections = 512;

// Objects of one object stream.
constexpr int64_t kMaxObjectsInStream = 4096;

// An entry of a table has ten digits, five digits, a letter and two characters of line end.
constexpr uint32_t kTableEntrySize = 20;

constexpr std::string_view kHeaderMark = "%PDF-";
constexpr std::string_view kEndMark = "%%EOF";

bool IsFlate(std::string_view dictionary) {
  const std::string_view filter = Entry(dictionary, "Filter");
  return filter == "/FlateDecode" || Element(filter, 0) == "/FlateDecode";
}

// Whether the filters are none, or one that is undone here.
bool IsReadable(std::string_view dictionary) {
  const std::string_view filter = Entry(dictionary, "Filter");
  if (filter.empty()) return true;
  return IsFlate(dictionary) && Element(filter, 1).empty();
}

uint8_t PaethPredictor(int left, int above, int corner) {
  const int estimate = left + above - corner;
  const int byLeft = std::abs(estimate - left);
  const int byAbove = std::abs(estimate - above);
  const int byCorner = std::abs(estimate - corner);
  if (byLeft <= byAbove && byLeft <= byCorner) return static_cast<uint8_t>(left);
  return static_cast<uint8_t>(byAbove <= byCorner ? above : corner);
}

// Undoes the PNG filters of rows with one byte of filter type each, in place: rows of one byte a
// sample. Returns the bytes that are left.
size_t UndoPngRows(std::span<uint8_t> bytes, size_t columns) {
  size_t written = 0;
  for (size_t row = 0; columns + 1 <= bytes.size() - row; row += columns + 1) {
    const uint8_t filter = bytes[row];
    for (size_t i = 0; i < columns; ++i) {
      const int left = i > 0 ? bytes[written + i - 1] : 0;
      const int above = written > 0 ? bytes[written + i - columns] : 0;
      const int corner = i > 0 && written > 0 ? bytes[written + i - columns - 1] : 0;
      int predicted = 0;
      if (filter == 1) predicted = left;
      if (filter == 2) predicted = above;
      if (filter == 3) predicted = (left + above) / 2;
      if (filter == 4) predicted = PaethPredictor(left, above, corner);
      bytes[written + i] = static_cast<uint8_t>(bytes[row + 1 + i] + predicted);
    }
    written += columns;
  }
  return written;
}

// Undoes the predictor that the dictionary names; the bytes that are left.
size_t UndoPredictor(std::string_view dictionary, std::span<uint8_t> bytes) {
  constexpr int64_t kFirstPng = 10;
  constexpr int64_t kMostColumns = 4096;
  std::string_view parameters = Entry(dictionary, "DecodeParms");
  if (parameters.starts_with('[')) parameters = Element(parameters, 0);
  const int64_t predictor = Integer(Entry(parameters, "Predictor")).value_or(1);
  if (predictor < kFirstPng) return predictor == 1 ? bytes.size() : 0;
  const int64_t columns = Integer(Entry(parameters, "Columns")).value_or(1);
  if (columns < 1 || columns > kMostColumns) return 0;
  return UndoPngRows(bytes, static_cast<size_t>(columns));
}

// Where the data of a stream begins behind its dictionary; npos when no stream follows.
size_t DataOffset(std::string_view text, std::string_view dictionary) {
  const size_t end = static_cast<size_t>(dictionary.data() - text.data()) + dictionary.size();
  const std::string_view behind = SkipSpace(text.substr(end));
  if (!behind.starts_with("stream")) return std::string_view::npos;
  size_t offset = static_cast<size_t>(behind.data() - text.data()) + 6;
  if (offset < text.size() && text[offset] == '\r') ++offset;
  if (offset < text.size() && text[offset] == '\n') ++offset;
  return offset;
}

// The value behind "12 0 obj", when that is the number; empty else.
std::string_view ObjectValue(std::string_view text, uint32_t number) {
  text = SkipSpace(text);
  const std::optional<int64_t> first = Integer(text);
  if (!first.has_value() || *first != int64_t{number}) return {};
  const size_t mark = text.substr(0, 32).find("obj");
  return mark == std::string_view::npos ? std::string_view() : Value(text.substr(mark + 3));
}

uint64_t Field(std::string_view row, size_t offset, size_t width) {
  uint64_t value = 0;
  for (size_t i = 0; i < width; ++i) {
    value = value << 8 | static_cast<unsigned char>(row[offset + i]);
  }
  return value;
}

// The layout of a cross-reference stream: widths of the three fields of a row, in bytes.
struct Widths {
  size_t type, second, third;
  bool isValid = false;
  size_t Row() const { return type + second + third; }
};

Widths WidthsOf(std::string_view dictionary) {
  const std::string_view array = Entry(dictionary, "W");
  int64_t values[3];
  for (size_t i = 0; i < 3; ++i) {
    values[i] = Integer(Element(array, i)).value_or(-1);
    if (values[i] < 0 || values[i] > 8) return {};
  }
  return {static_cast<size_t>(values[0]), static_cast<size_t>(values[1]),
          static_cast<size_t>(values[2]), values[1] > 0};
}

// The place of an object among the rows of a cross-reference stream; -1: it has none there.
int64_t RowOf(std::string_view dictionary, uint32_t number) {
  const std::string_view index = Entry(dictionary, "Index");
  if (index.empty()) {
    return int64_t{number} < Integer(Entry(dictionary, "Size")).value_or(0) ? int64_t{number} : -1;
  }
  int64_t before = 0;
  std::string_view rest = index.substr(1);
  for (uint32_t part = 0; part < kMaxSubsections; ++part) {
    const std::string_view firstText = Value(rest);
    const std::optional<int64_t> first = Integer(firstText);
    if (!first.has_value()) return -1;
    rest.remove_prefix(static_cast<size_t>(firstText.data() - rest.data()) + firstText.size());
    const std::string_view countText = Value(rest);
    const int64_t count = Integer(countText).value_or(-1);
    if (count < 0 || count > std::numeric_limits<uint32_t>::max()) return -1;
    rest.remove_prefix(static_cast<size_t>(countText.data() - rest.data()) + countText.size());
    if (number >= *first && number - *first < count) return before + (number - *first);
    before += count;
  }
  return -1;
}

}  // namespace

std::unique_ptr<PdfFile> PdfFile::Make(IdentificationStream* stream) {
  std::unique_ptr<PdfFile> file(new (std::nothrow) PdfFile(stream));
  if (file == nullptr) return nullptr;
  file->size_ = static_cast<int64_t>(
      std::min<uint64_t>(FileSize(stream), std::numeric_limits<int64_t>::max()));
  file->ReadHead();
  file->ReadTail();
  if (file->startXref_ > 0) (void)file->Find(std::numeric_limits<uint32_t>::max());
  return file;
}

uint32_t PdfFile::ReadAt(int64_t offset, std::span<char> out) {
  if (offset < 0 || IdStreamSeek(stream_, offset, kIoFromStart) != 0) return 0;
  const auto most = static_cast<uint32_t>(std::min<size_t>(out.size(), left_));
  uint32_t count = 0;
  while (count < most) {
    const uint32_t byte = IdStreamGetByte(stream_);
    if (byte == kEndOfData) break;
    out[count++] = static_cast<char>(byte);
    const uint32_t more =
        std::min(most - count, static_cast<uint32_t>(std::max(stream_->remaining, 0)));
    std::copy_n(stream_->next, more, reinterpret_cast<uint8_t*>(out.data()) + count);
    PassBuffered(stream_, more);
    count += more;
  }
  left_ -= count;
  return count;
}

std::string_view PdfFile::ReadText(int64_t offset, std::span<char> out) {
  return {out.data(), ReadAt(offset, out)};
}

void PdfFile::ReadHead() {
  const std::string_view text = ReadText(0, headBytes_);
  const size_t mark = text.find(kHeaderMark);
  if (mark == std::string_view::npos) return;
  headerOffset_ = static_cast<int64_t>(mark);
  head_ = text.substr(mark);
}

void PdfFile::ReadTail() {
  const int64_t start = std::max<int64_t>(0, size_ - kTailSize);
  const std::string_view tail = ReadText(start, std::span(object_).first(kTailSize));
  const size_t end = tail.rfind(kEndMark);
  if (end != std::string_view::npos) {
    size_t behind = end + kEndMark.size();
    if (behind < tail.size() && tail[behind] == '\r') ++behind;
    if (behind < tail.size() && tail[behind] == '\n') ++behind;
    trailingBytes_ = static_cast<int64_t>(tail.size() - behind);
  }
  constexpr std::string_view kStart = "startxref";
  const size_t mark = tail.substr(0, end).rfind(kStart);
  if (mark == std::string_view::npos) return;
  startXref_ = Integer(tail.substr(mark + kStart.size())).value_or(0);
}

void PdfFile::KeepTrailer(std::string_view dictionary) {
  if (!trailer_.empty() || dictionary.empty() || dictionary.size() > trailerBytes_.size()) return;
  std::copy(dictionary.begin(), dictionary.end(), trailerBytes_.begin());
  trailer_ = {trailerBytes_.data(), dictionary.size()};
}

PdfFile::Place PdfFile::Find(uint32_t number) {
  Place place;
  int64_t next = startXref_;
  int64_t hybrid = 0;
  for (uint32_t count = 0; count < kMaxSections && next > 0 && next < size_; ++count) {
    Section section{next, 0, 0};
    if (LookInSection(number, &section, &place)) return place;
    hybrid = section.hybrid;
    if (hybrid > 0) {
      Section stream{hybrid, 0, 0};
      if (LookInSection(number, &stream, &place)) return place;
    }
    if (section.previous == next) break;
    next = section.previous;
  }
  return place;
}

// Stores in `section` where to look on. True when the section tells of the object.
bool PdfFile::LookInSection(uint32_t number, Section* section, Place* place) {
  const int64_t offset = section->offset + headerOffset_;
  std::array<char, 64> begin;
  const std::string_view text = SkipSpace(ReadText(offset, begin));
  if (!text.starts_with("xref")) {
    section->offset = offset;
    return LookInStream(number, section, place);
  }
  int64_t trailerOffset = 0;
  const int64_t behind = offset + (text.data() - begin.data()) + 4;
  if (LookInTable(number, behind, place, &trailerOffset)) return true;
  if (trailerOffset == 0) return false;
  const std::string_view dictionary = Value(ReadText(trailerOffset, section_));
  KeepTrailer(dictionary);
  section->previous = Integer(Entry(dictionary, "Prev")).value_or(0);
  section->hybrid = Integer(Entry(dictionary, "XRefStm")).value_or(0);
  return false;
}

bool PdfFile::LookInTable(uint32_t number, int64_t offset, Place* place, int64_t* trailerOffset) {
  std::array<char, 64> window;
  for (uint32_t count = 0; count < kMaxSubsections; ++count) {
    const std::string_view text = ReadText(offset, window);
    const std::string_view head = SkipSpace(text);
    if (head.starts_with("trailer")) {
      *trailerOffset = offset + (head.data() - text.data()) + 7;
      return false;
    }
    const std::optional<int64_t> first = Integer(head);
    if (!first.has_value()) return false;
    const std::string_view firstText = Value(head);
    const std::string_view countText = Value(head.substr(firstText.size()));
    const int64_t entries = Integer(countText).value_or(-1);
    if (entries < 0 || entries > size_ / kTableEntrySize) return false;
    const std::string_view table = SkipSpace(
        text.substr(static_cast<size_t>(countText.data() - text.data()) + countText.size()));
    offset += table.data() - text.data();
    if (number >= *first && number - *first < entries) {
      std::array<char, kTableEntrySize> bytes;
      const std::string_view entry = ReadText(offset + (number - *first) * kTableEntrySize, bytes);
      const std::optional<int64_t> where = Integer(entry);
      if (entry.size() < 18 || !where.has_value() || entry[17] != 'n') return false;
      *place = {Place::Kind::kOffset, static_cast<uint64_t>(*where)};
      return true;
    }
    offset += entries * kTableEntrySize;
  }
  return false;
}

bool PdfFile::LookInStream(uint32_t number, Section* section, Place* place) {
  const std::string_view text = ReadText(section->offset, section_);
  const size_t mark = text.substr(0, 32).find("obj");
  if (mark == std::string_view::npos) return false;
  const std::string_view dictionary = Value(text.substr(mark + 3));
  if (Entry(dictionary, "Type") != "/XRef") return false;
  KeepTrailer(dictionary);
  section->previous = Integer(Entry(dictionary, "Prev")).value_or(0);
  const Widths widths = WidthsOf(dictionary);
  const int64_t row = RowOf(dictionary, number);
  const size_t data = DataOffset(text, dictionary);
  if (!widths.isValid || row < 0 || data == std::string_view::npos) return false;
  const std::string_view rows = Inflated(dictionary, section->offset + static_cast<int64_t>(data));
  const uint64_t begin = static_cast<uint64_t>(row) * widths.Row();
  if (begin >= rows.size() || widths.Row() > rows.size() - begin) return false;
  const std::string_view entry = rows.substr(begin, widths.Row());
  const uint64_t type = widths.type > 0 ? Field(entry, 0, widths.type) : 1;
  const uint64_t where = Field(entry, widths.type, widths.second);
  if (type == 1) *place = {Place::Kind::kOffset, where};
  if (type == 2) *place = {Place::Kind::kInStream, where};
  return type == 1 || type == 2;
}

// The data from that offset on, unpacked as the dictionary says.
std::string_view PdfFile::Inflated(std::string_view dictionary, int64_t dataOffset) {
  if (!IsReadable(dictionary)) return {};
  if (inflatedFrom_ == dataOffset) return {inflated_.data(), inflatedLength_};
  const int64_t length = Integer(Entry(dictionary, "Length")).value_or(-1);
  const bool isKnown = length >= 0 && !Reference(Entry(dictionary, "Length")).has_value();
  const auto most =
      static_cast<size_t>(isKnown ? std::min<int64_t>(length, kPackedSize) : int64_t{kPackedSize});
  const uint32_t packed = ReadAt(dataOffset, std::span(packed_).first(most));
  auto* out = reinterpret_cast<uint8_t*>(inflated_.data());
  size_t size = packed;
  if (IsFlate(dictionary)) {
    size = InflateZlib({reinterpret_cast<const uint8_t*>(packed_.data()), packed},
                       {out, inflated_.size()});
    size = UndoPredictor(dictionary, {out, size});
  } else {
    std::copy_n(packed_.data(), packed, inflated_.data());
  }
  inflatedFrom_ = dataOffset;
  inflatedLength_ = size;
  return {inflated_.data(), size};
}

std::string_view PdfFile::ReadObjectAt(uint64_t offset, uint32_t number, std::span<char> out,
                                       int64_t* dataOffset) {
  if (offset >= static_cast<uint64_t>(size_)) return {};
  const int64_t start = static_cast<int64_t>(offset) + headerOffset_;
  const std::string_view text = ReadText(start, out);
  const std::string_view value = ObjectValue(text, number);
  if (value.empty() || dataOffset == nullptr) return value;
  const size_t data = DataOffset(text, value);
  *dataOffset = data == std::string_view::npos ? -1 : start + static_cast<int64_t>(data);
  return value;
}

std::string_view PdfFile::ObjectInStream(uint32_t number, uint64_t streamNumber) {
  if (streamNumber > std::numeric_limits<uint32_t>::max()) return {};
  const auto holder = static_cast<uint32_t>(streamNumber);
  const Place place = Find(holder);
  if (place.kind != Place::Kind::kOffset) return {};
  int64_t dataOffset = -1;
  const std::string_view dictionary = ReadObjectAt(place.where, holder, section_, &dataOffset);
  if (dataOffset < 0) return {};
  const int64_t count = Integer(Entry(dictionary, "N")).value_or(0);
  const int64_t first = Integer(Entry(dictionary, "First")).value_or(-1);
  const std::string_view content = Inflated(dictionary, dataOffset);
  if (first < 0 || static_cast<uint64_t>(first) > content.size()) return {};
  std::string_view rest = content.substr(0, static_cast<size_t>(first));
  for (int64_t i = 0; i < std::min(count, kMaxObjectsInStream); ++i) {
    const std::string_view numberText = Value(rest);
    if (numberText.empty()) return {};
    rest.remove_prefix(static_cast<size_t>(numberText.data() - rest.data()) + numberText.size());
    const std::string_view offsetText = Value(rest);
    if (offsetText.empty()) return {};
    rest.remove_prefix(static_cast<size_t>(offsetText.data() - rest.data()) + offsetText.size());
    if (Integer(numberText) != int64_t{number}) continue;
    const int64_t offset = Integer(offsetText).value_or(-1);
    if (offset < 0 || offset > static_cast<int64_t>(content.size()) - first) return {};
    const std::string_view value = Value(content.substr(static_cast<size_t>(first + offset)));
    if (value.size() > object_.size()) return {};
    std::copy(value.begin(), value.end(), object_.begin());
    return {object_.data(), value.size()};
  }
  return {};
}

std::string_view PdfFile::Object(uint32_t number) {
  const Place place = Find(number);
  if (place.kind == Place::Kind::kOffset) {
    return ReadObjectAt(place.where, number, object_, nullptr);
  }
  return place.kind == Place::Kind::kInStream ? ObjectInStream(number, place.where)
                                              : std::string_view();
}

std::string_view PdfFile::Resolve(std::string_view value) {
  const std::optional<uint32_t> number = Reference(value);
  return number.has_value() ? Object(*number) : value;
}

std::string_view PdfFile::StreamOf(uint32_t number) {
  const Place place = Find(number);
  if (place.kind != Place::Kind::kOffset) return {};
  int64_t dataOffset = -1;
  const std::string_view dictionary = ReadObjectAt(place.where, number, object_, &dataOffset);
  return dataOffset < 0 ? std::string_view() : Inflated(dictionary, dataOffset);
}

}  // namespace fi::pdf
