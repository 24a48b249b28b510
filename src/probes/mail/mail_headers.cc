#include "probes/mail/mail_headers.h"

#include <algorithm>
#include <array>

#include "registry/format_ids.h"
#include "stream/id_stream.h"
#include "stream/text_view.h"

namespace fi {
namespace {

constexpr uint16_t kNoHeader = 0;
constexpr size_t kShortestValue = 2;  // behind the colon of a sender or receiver

bool NamesHtml(std::string_view line) {
  return ContainsText(line, "text/html") || ContainsText(line, "multipart/alternative");
}

// Takes the boundary that the line names. False where it names none.
bool TakeBoundary(std::string_view line, MailScore& score) {
  constexpr std::string_view kKeyword = "boundary=";
  const size_t found = line.find(kKeyword);
  if (found == std::string_view::npos) return false;
  score.boundary.Assign(line.substr(found + kKeyword.size()));
  return true;
}

// Content types.

void ReadRelated(std::string_view line, MailScore& score) {
  score.parts = MailParts::kRelated;
  if (NamesHtml(line)) {
    score.html = true;
  } else if (!TakeBoundary(line, score)) {
    score.wantsBoundary = true;
  }
}

void ReadMixed(std::string_view line, MailScore& score) {
  score.wantsBoundary = true;
  if (!TakeBoundary(line, score)) score.parts = MailParts::kMixedUnbounded;
}

void ReadContentType(std::string_view line, MailScore& score) {
  if (ContainsText(line, "multipart/signed")) {
    score.secure = score.isSigned = true;
  } else if (ContainsText(line, "application/x-pkcs7-mime") ||
             ContainsText(line, "application/pkcs7-mime")) {
    score.secure = true;
  }
  const bool scoresFirst = score.mime == 1;  // no MIME header came before
  if (ContainsText(line, "multipart/related")) {
    ReadRelated(line, score);
  } else if (scoresFirst && (ContainsText(line, "multipart/mixed") || score.isSigned)) {
    ReadMixed(line, score);
  } else if (score.enclosing == MailParts::kRelated) {
    if (NamesHtml(line)) {
      score.html = true;
      score.mime = 2;
    }
  } else if (score.enclosing == MailParts::kNone) {
    if (ContainsText(line, "text/html")) score.html = true;
  }
}

// Other headers: whether a line counts, and its further effects.

bool IsVersionOne(std::string_view line) { return ContainsText(line, "1.0"); }

bool HasValue(std::string_view line) { return line.size() >= line.find(':') + 1 + kShortestValue; }

// Deliberate: in a mailbox the header stays open, so that each one of its kind scores again.
void ReadNewsgroups(std::string_view /*line*/, MailScore& score) {
  if (score.mailboxSeparator) score.seen &= static_cast<uint16_t>(~kNewsgroups);
}

void ReadDisposition(std::string_view line, MailScore& score) {
  if (ContainsText(line, "attachment")) Add(score.envelope, 1);
}

void ReadFrom(std::string_view line, MailScore& score) {
  if (ContainsText(line, "saved by")) score.savedBy = true;
}

void ReadExtensionHeader(std::string_view line, MailScore& score) {
  if (ContainsText(line, ":")) Add(score.extensionHeaders, 1);
}

struct HeaderRule {
  std::string_view keyword;
  uint16_t header;   // a MailHeader that is looked at once, or kNoHeader
  uint8_t mime;      // points
  uint8_t envelope;  // points
  bool (*counts)(std::string_view line) = nullptr;  // false: the line stands for nothing
  void (*read)(std::string_view line, MailScore& score) = nullptr;  // after the points were added
  FormatId answer = kNoMatch;
};

// In order: a line belongs to the first rule with a keyword at its beginning and a header still
// open.
constexpr HeaderRule kRules[] = {
    {"mime-version:", kMimeVersion, 2, 0, IsVersionOne},
    {"x-qtlf-version:", kNoHeader, 0, 0, nullptr, nullptr, kFormatShortMessageExport},
    {"x-kel-sourceformat:", kNoHeader, 0, 0, nullptr, nullptr, kFormatMimeMailMessage},
    {"content-type:", kContentType, 1, 0, nullptr, ReadContentType},
    {"content-description:", kContentDescription, 1, 0},
    {"content-transfer-encoding:", kTransferEncoding, 1, 0},
    {"newsgroups:", kNewsgroups, 1, 0, nullptr, ReadNewsgroups},
    {"message-id:", kMessageId, 1, 1},
    {"article-i.d.:", kMessageId, 1, 0},
    {"content-disposition:", kDisposition, 0, 0, nullptr, ReadDisposition},
    {"from:", kFrom, 0, 1, HasValue, ReadFrom},
    {"to:", kTo, 0, 1, HasValue},
    {"subject:", kSubject, 0, 1},
    {"x-", kNoHeader, 0, 0, nullptr, ReadExtensionHeader},
    {"date:", kDate, 0, 1},
    {"sent:", kNoHeader, 0, 1},
    {"envelope-to:", kNoHeader, 0, 1},
    {"delivery-date:", kNoHeader, 0, 1},
    {"received:", kNoHeader, 0, 1},
    {"return-path:", kNoHeader, 0, 1},
};

// Which bytes begin a keyword, so that most lines of prose need no further look.
constexpr std::array<bool, 256> kFirstBytes = [] {
  std::array<bool, 256> first{};
  for (const HeaderRule& rule : kRules) first[static_cast<uint8_t>(rule.keyword.front())] = true;
  return first;
}();

const HeaderRule* FindRule(std::string_view line, uint16_t seen) {
  if (line.empty() || !kFirstBytes[static_cast<uint8_t>(line.front())]) return nullptr;
  const auto* rule = std::find_if(std::begin(kRules), std::end(kRules), [&](const HeaderRule& r) {
    return line.starts_with(r.keyword) && (r.header & seen) == 0;
  });
  return rule == std::end(kRules) ? nullptr : rule;
}

// The folded lines of a content type that announced parts.
void ReadContinuation(std::string_view line, MailScore& score) {
  if (!line.starts_with(' ') && !line.starts_with('\t')) {
    score.parts = MailParts::kNone;
    return;
  }
  if (score.wantsBoundary) TakeBoundary(line, score);
  if (score.parts == MailParts::kRelated && NamesHtml(line)) {
    score.html = true;
    score.boundary.Clear();
    score.wantsBoundary = false;
  }
}

}  // namespace

FormatId ScoreHeader(std::string_view line, MailScore& score) {
  if (score.parts != MailParts::kNone) ReadContinuation(line, score);
  const HeaderRule* rule = FindRule(line, score.seen);
  if (rule == nullptr) {
    if (score.envelopeBeforeOther == MailScore::kNoOtherLine) {
      score.envelopeBeforeOther = score.envelope;
    }
    return kNoMatch;
  }
  if (rule->counts != nullptr && !rule->counts(line)) return kNoMatch;
  score.seen |= rule->header;
  Add(score.mime, rule->mime);
  Add(score.envelope, rule->envelope);
  if (rule->read != nullptr) rule->read(line, score);
  return rule->answer;
}

}  // namespace fi
