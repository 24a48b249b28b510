#include "probes/encoded/encoded_text.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string_view>

#include "probes/encoded/encoded_lines.h"
#include "probes/encoded/yenc.h"
#include "registry/format_ids.h"
#include "stream/line_reader.h"

namespace fi {
namespace {

constexpr uint32_t kMostLines = 100;
constexpr uint32_t kMostLinesWithoutRun = 10;
constexpr uint32_t kRunThatProves = 5;  // a longer run does
constexpr uint32_t kClosedBinHexRun = 3;
constexpr size_t kMostOfShortLine = 44;  // a longer line may open a run
constexpr size_t kShortestHeaderLine = 11;
constexpr size_t kMostOfBinHexLine = 64;

constexpr std::string_view kBinHexBanner = "(this file must be converted with binhex 4.0)";
static_assert(kBinHexBanner.size() == 45);

// Well-formed lines of one encoding, one after another.
struct Run {
  bool tested = true;   // cleared when the encoding is out of the question for the rest of the file
  uint32_t length = 0;  // 0: none is open
};

class EncodedTextScan {
 public:
  explicit EncodedTextScan(IdentificationStream* stream) : stream_(stream) {}

  FormatId Identify();

 private:
  bool SkipSpacesAndLineEnds();
  bool ReadLine();
  bool LowerCaseLine();
  std::span<char> MutableText() { return {buffer_.data(), text_.size()}; }

  FormatId TestRuns();
  bool AdvanceRun(Run& run, bool passes);
  bool AdvanceBinHexRun();
  std::optional<FormatId> TestHeaders();
  FormatId BehindBeginLine();
  std::optional<FormatId> BehindBinHexBanner();
  bool ReadBinHexLine();

  IdentificationStream* stream_;
  LineBuffer buffer_{};
  uint16_t length_ = 0;
  std::string_view text_;  // of the buffer: the line up to a NUL, where there is one
  uint32_t linesWithoutRun_ = 0;
  Run uu_;
  Run xx_;
  Run binHex_;
};

bool IsModeDigit(char c) {
  // Deliberate: no 7, so that the data under "begin 755" is judged by its lines alone.
  return c >= '0' && c <= '6';
}

// "begin ", three or four mode digits, a blank.
bool IsBeginLine(std::string_view line) {
  constexpr std::string_view kBegin = "begin ";
  if (!line.starts_with(kBegin)) return false;
  line.remove_prefix(kBegin.size());
  const auto end = std::find_if_not(line.begin(), line.end(), IsModeDigit);
  const auto digits = end - line.begin();
  return (digits == 3 || digits == 4) && end != line.end() && *end == ' ';
}

// Passes blanks and line ends. False at end of data.
bool EncodedTextScan::SkipSpacesAndLineEnds() {
  uint32_t byte = 0;
  do {
    byte = IdStreamGetByte(stream_);
    if (byte == kEndOfData) return false;
  } while (byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n');
  PutBackByte(stream_);
  return true;
}

// False for an empty line and at end of data.
bool EncodedTextScan::ReadLine() {
  length_ = fi::ReadLine(buffer_.data(), kLineCapacity, LineEnds::kMarksAndFormFeed, stream_);
  text_ = buffer_.data();
  return length_ != 0;
}

// False when the line is not text.
bool EncodedTextScan::LowerCaseLine() {
  if (!IsPlainAsciiLine(buffer_, length_)) return false;
  for (char& c : MutableText()) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
  }
  return true;
}

// Counts the line for or against a run of uuencode or xxencode. True when the run proves itself, by
// its length or by the line that ends it.
bool EncodedTextScan::AdvanceRun(Run& run, bool passes) {
  if (run.length == 0) {
    if (passes && text_.size() > kMostOfShortLine) {
      run.length = 1;
      linesWithoutRun_ = 0;
    }
    return false;
  }
  if (passes) return ++run.length > kRunThatProves;
  if (text_.starts_with("end")) return true;
  run = {.tested = false, .length = 0};
  return false;
}

// The same for BinHex, whose run is opened and closed by colons.
bool EncodedTextScan::AdvanceBinHexRun() {
  const std::string_view line = text_;
  if (!BinHexLineTest(line)) {
    binHex_.length = 0;
    return false;
  }
  if (binHex_.length > 0) {
    ++binHex_.length;
    return binHex_.length > kRunThatProves ||
           (binHex_.length >= kClosedBinHexRun && line.ends_with(':'));
  }
  if (!line.starts_with(':')) {
    binHex_.tested = false;
  } else if (!line.ends_with(':') && line.size() > kMostOfShortLine) {
    binHex_.length = 1;
    linesWithoutRun_ = 0;
  }
  return false;
}

// In this order: a line may be well-formed in more than one encoding.
FormatId EncodedTextScan::TestRuns() {
  // Deliberate: no sequence character is expected from line to line, so that the character behind
  // any full uuencode line counts as one and never as a checksum.
  if (uu_.tested && AdvanceRun(uu_, UuLineTest(MutableText(), 0))) return kFormatUuencodeLines;
  if (xx_.tested && AdvanceRun(xx_, XxLineTest(text_))) return kFormatXxencodeLines;
  if (binHex_.tested && AdvanceBinHexRun()) return kFormatBinHexLines;
  return kNoMatch;
}

// What stands behind a "begin" line: two lines of uuencode, or else two of xxencode, the last of
// which may be the "end" line. A first line that could be either is not looked at again for
// xxencode.
FormatId EncodedTextScan::BehindBeginLine() {
  constexpr std::string_view kEnd = "end";
  if (!ReadLine()) return kNoMatch;
  if (UuLineTest(MutableText(), 'z')) {
    if (!ReadLine()) return kNoMatch;
    if (UuLineTest(MutableText(), 'y') || text_.starts_with(kEnd)) return kFormatUuencode;
  }
  if (!XxLineTest(text_) || !ReadLine()) return kNoMatch;
  return XxLineTest(text_) || text_.starts_with(kEnd) ? kFormatXxencode : kNoMatch;
}

// Reads a line; false when it cannot stand behind the banner.
bool EncodedTextScan::ReadBinHexLine() {
  return ReadLine() && length_ <= kMostOfBinHexLine && IsPlainAsciiLine(buffer_, length_);
}

// The data behind the banner begins with a colon; else the scan goes on.
// Deliberate: the byte that is no colon is gone from the line that follows.
std::optional<FormatId> EncodedTextScan::BehindBinHexBanner() {
  uint32_t byte = 0;
  do {
    byte = IdStreamGetByte(stream_);
  } while (byte == '\r' || byte == '\n');
  if (byte != ':') return std::nullopt;
  if (!ReadBinHexLine()) return kNoMatch;
  return text_.ends_with(':') || ReadBinHexLine() ? kFormatBinHex : kNoMatch;
}

// An answer when the line, in lower case, is the header line of an encoding.
std::optional<FormatId> EncodedTextScan::TestHeaders() {
  if (length_ < kShortestHeaderLine) return std::nullopt;
  if (IsBeginLine(text_)) return BehindBeginLine();
  if (text_.starts_with(kYEncBegin)) return IdentifyYEnc(buffer_, stream_);
  if (length_ <= kMostOfBinHexLine && text_.starts_with(kBinHexBanner)) {
    return BehindBinHexBanner();
  }
  return std::nullopt;
}

FormatId EncodedTextScan::Identify() {
  for (uint32_t line = 0; line < kMostLines; ++line) {
    if (!SkipSpacesAndLineEnds() || !ReadLine()) return kNoMatch;
    if (const FormatId id = TestRuns(); id != kNoMatch) return id;
    if (!LowerCaseLine()) return kNoMatch;
    if (text_.starts_with("_=_")) continue;
    if (const std::optional<FormatId> id = TestHeaders()) return *id;
    if (linesWithoutRun_ > kMostLinesWithoutRun) return kNoMatch;
    ++linesWithoutRun_;
  }
  return kNoMatch;
}

}  // namespace

FormatId EncodedTextProbe(IdentificationStream* stream) {
  if (IdStreamSeek(stream, 0, kIoFromStart) != 0) return kNoMatch;
  return EncodedTextScan(stream).Identify();
}

}  // namespace fi
