#include "probes/mail/message_header.h"

#include <algorithm>
#include <iterator>

#include "registry/format_ids.h"
#include "stream/id_stream.h"
#include "stream/text_view.h"

namespace fi {
namespace {

constexpr uint32_t kMostLines = 128;

// Fields of RFC 5322 and of what carries mail and news. A text whose first line has one of them,
// and nothing but fields up to the first empty line, is a message.
constexpr std::string_view kFields[] = {"bcc",         "cc",         "date",       "delivered-to",
                                        "from",        "message-id", "newsgroups", "organization",
                                        "path",        "received",   "references", "reply-to",
                                        "return-path", "sender",     "subject",    "to"};

constexpr std::string_view kMimeFields[] = {"content-disposition", "content-transfer-encoding",
                                            "content-type", "mime-version"};

template <size_t kCount>
bool IsOneOf(std::string_view name, const std::string_view (&names)[kCount]) {
  return std::any_of(std::begin(names), std::end(names),
                     [name](std::string_view known) { return EqualsNoCase(name, known); });
}

// The name of the field that a line begins; empty where it begins none.
std::string_view FieldOf(std::string_view line) {
  const size_t colon = line.find(':');
  if (colon == std::string_view::npos) return {};
  const std::string_view name = TrimBlanks(line.substr(0, colon));
  const bool isName =
      std::all_of(name.begin(), name.end(), [](char c) { return c > ' ' && c <= '~'; });
  return isName ? name : std::string_view();
}

bool IsMediaType(std::string_view line) {
  const std::string_view value = TrimBlanks(line.substr(line.find(':') + 1));
  const size_t slash = value.find('/');
  return slash != 0 && slash != std::string_view::npos &&
         std::all_of(value.begin(), value.begin() + static_cast<ptrdiff_t>(slash), IsLetter);
}

}  // namespace

FormatId MessageHeaderProbe(std::string_view text, const char* extension) {
  Lines lines(text);
  std::string_view line;
  uint32_t known = 0;
  bool isMime = false;
  for (uint32_t count = 0; count < kMostLines && lines.Next(&line) && !line.empty(); ++count) {
    if (count > 0 && IsSpaceOrTab(line[0])) continue;  // a folded line
    const std::string_view name = FieldOf(line);
    const bool isMimeField = IsOneOf(name, kMimeFields);
    const bool isKnown = isMimeField || IsOneOf(name, kFields);
    if (name.empty() || (count == 0 && !isKnown)) return kNoMatch;
    if (isMimeField && EqualsNoCase(name, "content-type")) isMime = isMime || IsMediaType(line);
    known += isKnown ? 1 : 0;
  }
  if (isMime) return kFormatMimeMailMessage;
  const bool isCalledMessage = std::string_view(extension) == "EML";
  return known >= (isCalledMessage ? 1 : 2) && line.empty() ? kFormatRfc822Message : kNoMatch;
}

}  // namespace fi
