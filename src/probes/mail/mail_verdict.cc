#include "probes/mail/mail_verdict.h"

#include "registry/format_ids.h"
#include "stream/id_stream.h"

namespace fi {
namespace {

constexpr uint16_t kEnoughMime = 2;
constexpr uint16_t kEnoughEnvelope = 2;
constexpr uint16_t kEnoughExtensionHeaders = 6;

bool IsEml(std::string_view extension) { return extension.starts_with("EML"); }

FormatId News(std::string_view extension) {
  return extension.starts_with("NWS") ? kFormatNewsArticleFile : kFormatNewsArticle;
}

// Deliberate: read as signed, so that from 32,768 envelope headers on it counts as none.
int16_t EnvelopeBeforeOther(const MailScore& score) {
  return static_cast<int16_t>(score.envelopeBeforeOther);
}

// Next to no envelope either: extension headers tell, or the headers of the first part.
std::optional<FormatId> WithoutEnvelope(const MailScore& score, std::string_view extension) {
  if (score.mime == 0 || score.extensionHeaders < kEnoughExtensionHeaders ||
      score.parts == MailParts::kRelated) {
    if (score.foundBoundary) return std::nullopt;
    return kNoMatch;
  }
  return IsEml(extension) ? kFormatEmlMessage : kFormatWeakMailMessage;
}

// Too few MIME headers, or a header block that ends within a multipart/related content type.
std::optional<FormatId> WithoutMime(const MailScore& score, std::string_view extension) {
  if (EnvelopeBeforeOther(score) >= kEnoughEnvelope) {
    return score.mailboxSeparator ? kFormatMailbox : kFormatRfc822Message;
  }
  if (score.envelope < kEnoughEnvelope) return WithoutEnvelope(score, extension);
  if (score.Saw(kNewsgroups)) return News(extension);
  if (score.mailboxSeparator) return kFormatMailbox;
  if (score.numericFirstLine) return kFormatAppleMailMessage;
  return score.mime == 0 ? kNoMatch : kFormatWeakMailMessage;
}

bool IsSavedPage(const MailScore& score) {
  return score.html && ((!score.Saw(kFrom) && !score.Saw(kSubject)) || score.savedBy);
}

FormatId WithMime(const MailScore& score, std::string_view extension) {
  if (score.numericFirstLine) return kFormatAppleMailMessage;
  if (score.mailboxSeparator) return kFormatMailbox;
  if (IsSavedPage(score)) return kFormatMimeHtmlArchive;
  if (score.secure) return score.isSigned ? kFormatSMimeSignedMessage : kFormatSMimeMessage;
  if (score.Saw(kNewsgroups)) return News(extension);
  if (score.envelope >= kEnoughEnvelope) {
    return IsEml(extension) ? kFormatEmlMessage : kFormatMimeMailMessage;
  }
  // Deliberate: MIME headers without any envelope are a saved page, unless the name says mail.
  return score.envelope == 1 || IsEml(extension) ? kFormatWeakMailMessage : kFormatMimeHtmlArchive;
}

}  // namespace

std::optional<FormatId> MailVerdict(const MailScore& score, std::string_view extension) {
  if (score.mime < kEnoughMime || score.parts == MailParts::kRelated) {
    return WithoutMime(score, extension);
  }
  return WithMime(score, extension);
}

}  // namespace fi
