#include "probes/mail/mail.h"

#include <cstring>
#include <optional>
#include <string_view>

#include "probes/mail/mail_headers.h"
#include "probes/mail/mail_score.h"
#include "probes/mail/mail_verdict.h"
#include "stream/line_reader.h"

namespace fi {
namespace {

constexpr uint16_t kMostLinesWithoutHeader = 100;
constexpr uint16_t kMostLinesToBoundary = 100;
constexpr uint16_t kMostNonTextLines = 12;

// Eight characters at a time, as the bytes of a word: hardly any line of a text is a header, and
// byte by byte it costs four times as much to see that.
using Word = uint64_t;
constexpr Word kEach = 0x0101010101010101;
constexpr Word kHighBits = kEach * 0x80;

constexpr Word ZeroBytes(Word word) { return (word - kEach) & ~word & kHighBits; }

constexpr bool HoldsCommentOrNonText(Word word) {
  return ((word & kHighBits) | ZeroBytes(word) | ZeroBytes(word ^ kEach * '(')) != 0;
}

// REQUIRES: each byte is below 0x80, so that no sum carries into the next.
constexpr Word LowerCase(Word word) {
  const Word fromA = word + kEach * (0x80 - 'A');
  const Word behindZ = word + kEach * (0x80 - 'Z' - 1);
  return word | (fromA & ~behindZ & kHighBits) >> 2;
}

// Puts the words in front of the first that holds a comment or a byte that is not ASCII text into
// lower case, and returns how many bytes they have.
size_t LowerCaseWords(char* line, size_t length) {
  size_t done = 0;
  for (; length - done >= sizeof(Word); done += sizeof(Word)) {
    Word word = 0;
    std::memcpy(&word, line + done, sizeof(word));
    if (HoldsCommentOrNonText(word)) break;
    word = LowerCase(word);
    std::memcpy(line + done, &word, sizeof(word));
  }
  return done;
}

struct Line {
  std::string_view text;  // up to a NUL, where there is one
  bool isText = true;     // false when a byte is not ASCII text
};

// Puts a line into lower case and takes its comments in parentheses out, in place. Ends at a byte
// that is not ASCII text: the line then keeps what was not yet looked at, behind what was.
Line NormaliseLine(char* line, size_t length) {
  size_t kept = LowerCaseWords(line, length);
  bool inComment = false;
  for (size_t i = kept; i < length; ++i) {
    const auto byte = static_cast<uint8_t>(line[i]);
    if (byte == 0 || byte > 0x7F) return {.text = line, .isText = false};
    if (inComment) {
      inComment = byte != ')';  // comments do not nest
    } else if (byte == '(') {
      inComment = true;
    } else {
      const bool isUpper = byte >= 'A' && byte <= 'Z';
      line[kept++] = static_cast<char>(isUpper ? byte + ('a' - 'A') : byte);
    }
  }
  line[kept] = '\0';
  return {.text = {line, kept}};
}

// The rest of a "from " line that separates the messages of a mailbox: one address, or none and a
// time of day behind a hyphen.
bool IsMailboxSeparator(std::string_view line) {
  const size_t at = line.find('@');
  if (at != std::string_view::npos) return line.find('@', at + 1) == std::string_view::npos;
  const size_t hyphen = line.find('-');
  return hyphen != std::string_view::npos && line.find(':', hyphen) != std::string_view::npos;
}

// One number and blanks.
bool IsNumber(std::string_view line) {
  const size_t first = line.find_first_not_of(' ');
  if (first == std::string_view::npos) return false;
  line.remove_prefix(first);
  const size_t end = line.find_first_not_of("0123456789");
  if (end == std::string_view::npos) return true;
  return end > 0 && line.find_first_not_of(' ', end) == std::string_view::npos;
}

class MailScan {
 public:
  MailScan(IdentificationStream* stream, std::string_view extension)
      : stream_(stream), extension_(extension) {}

  FormatId Identify();

 private:
  void ReadLine();
  bool LookAtFirstLine();
  std::optional<FormatId> ReadHeaders();
  void FindBoundary();
  void StartPart();

  IdentificationStream* stream_;
  std::string_view extension_;
  LineBuffer buffer_{};
  uint16_t length_ = 0;  // of the line as read
  Line line_;            // the same, normalised
  MailScore score_;
};

void MailScan::ReadLine() {
  length_ = fi::ReadLine(buffer_.data(), kLineCapacity, LineEnds::kMarksAndFormFeed, stream_);
  line_ = NormaliseLine(buffer_.data(), length_);
}

// False when the file cannot be a message.
bool MailScan::LookAtFirstLine() {
  const std::string_view line = line_.text;
  if (line.starts_with("from ")) {
    score_.mailboxSeparator = IsMailboxSeparator(line);
  } else if (line.starts_with('<')) {
    return false;
  } else if (IsNumber(line)) {
    score_.numericFirstLine = true;
  }
  return true;
}

// Scores the header lines up to the line that ends them. An identifier, kNoMatch included, where
// one of them decides.
std::optional<FormatId> MailScan::ReadHeaders() {
  while (score_.line < kMostLinesWithoutHeader || score_.mime > 0 || score_.envelope > 0) {
    ReadLine();
    if (!line_.isText) ++score_.nonTextLines;
    if (length_ == 0 || score_.nonTextLines > kMostNonTextLines) {
      if (score_.envelopeBeforeOther == MailScore::kNoOtherLine) {
        score_.envelopeBeforeOther = score_.envelope;
      }
      if (length_ == 0 && !score_.boundary.Empty()) FindBoundary();
      return std::nullopt;
    }
    if (score_.line == 0 && !LookAtFirstLine()) return kNoMatch;
    if (const FormatId id = ScoreHeader(line_.text, score_); id != kNoMatch) return id;
    ++score_.line;
  }
  return std::nullopt;
}

// Passes the text in front of the first part. The closing delimiter, with two hyphens more, is no
// match.
void MailScan::FindBoundary() {
  constexpr std::string_view kHyphens = "--";
  for (; score_.line < kMostLinesToBoundary; ++score_.line) {
    ReadLine();
    const std::string_view line = line_.text;
    if (line.starts_with(kHyphens) && line.substr(kHyphens.size()) == score_.boundary.Value()) {
      score_.foundBoundary = true;
      if (score_.secure) Add(score_.mime, 2);
      return;
    }
    if (length_ == 0 && MetEndOfData(stream_)) return;
  }
}

// Begins afresh with the headers of the part at the stream's position.
void MailScan::StartPart() {
  const uint16_t line = score_.line;
  const MailParts enclosing = score_.parts;
  score_ = MailScore{};
  score_.line = line;
  score_.enclosing = enclosing;
}

FormatId MailScan::Identify() {
  // Ends: a part is looked into only where a boundary line of it was read within the first hundred.
  for (;;) {
    if (const std::optional<FormatId> id = ReadHeaders()) return *id;
    if (const std::optional<FormatId> id = MailVerdict(score_, extension_)) return *id;
    StartPart();
  }
}

}  // namespace

FormatId MailProbe(IdentificationStream* stream, const char* extension) {
  if (IdStreamSeek(stream, 0, kIoFromStart) != 0) return kNoMatch;
  return MailScan(stream, extension).Identify();
}

}  // namespace fi
