#include "properties/mail/internet_message.h"

#include <string_view>

#include "properties/text/text.h"
#include "stream/file_bytes.h"
#include "stream/text_view.h"

namespace fi {
namespace {

// Header lines and the beginning of the body.
constexpr size_t kLooked = 16 * 1024;

bool ContainsNoCase(std::string_view text, std::string_view lower) {
  for (size_t at = 0; at + lower.size() <= text.size(); ++at) {
    if (StartsWithNoCase(text.substr(at), lower)) return true;
  }
  return false;
}

// The field "Content-Type" with the lines that go on, up to the body; empty without one.
std::string_view ContentType(std::string_view text, size_t* offset) {
  constexpr std::string_view kName = "content-type:";
  Lines lines(text);
  std::string_view line;
  const char* begin = nullptr;
  while (lines.Next(&line) && !line.empty()) {
    const bool goesOn = IsSpaceOrTab(line[0]);
    if (begin != nullptr && !goesOn) break;
    if (begin == nullptr && StartsWithNoCase(line, kName)) begin = line.data();
    if (begin != nullptr) *offset = static_cast<size_t>(line.data() + line.size() - text.data());
  }
  if (begin == nullptr) return {};
  const size_t start = static_cast<size_t>(begin - text.data());
  const size_t end = *offset;
  *offset = start;
  return text.substr(start, end - start);
}

void SetSecure(bool isEncrypted, std::string_view scheme, size_t offset, PropertySet& out) {
  const auto place = static_cast<int64_t>(offset);
  if (isEncrypted) {
    out.Set(Property::kEncryption, "certificate", "Content-Type", place);
    out.Set(Property::kEncryptionScheme, scheme, "Content-Type", place);
  } else {
    out.Set(Property::kSigned, "yes", "Content-Type", place);
    out.Set(Property::kEncryption, "none", "Content-Type", place);
  }
}

}  // namespace

void ReadInternetMessageProperties(const PropertyQuestion& question, PropertySet& out) {
  const FileBytes<kLooked> head(question.stream, 0);
  size_t offset = 0;
  const std::string_view type = ContentType(head.View(), &offset);
  if (ContainsNoCase(type, "pkcs7-mime")) {
    const bool isSigned = ContainsNoCase(type, "signed-data") || ContainsNoCase(type, "certs-only");
    SetSecure(!isSigned, "S/MIME", offset, out);
  } else if (ContainsNoCase(type, "multipart/signed")) {
    SetSecure(false, {}, offset, out);
  } else if (ContainsNoCase(type, "multipart/encrypted")) {
    SetSecure(true, "OpenPGP", offset, out);
  } else if (const size_t armour = head.View().find("\n-----BEGIN PGP MESSAGE-----");
             armour != std::string_view::npos) {
    out.Set(Property::kEncryption, "certificate", "body", static_cast<int64_t>(armour + 1));
    out.Set(Property::kEncryptionScheme, "OpenPGP", "body", static_cast<int64_t>(armour + 1));
  } else if (head.View().find("\n-----BEGIN PGP SIGNED MESSAGE-----") != std::string_view::npos) {
    out.Set(Property::kSigned, "yes", "body");
  } else {
    out.Set(Property::kEncryption, "none", "Content-Type");
  }
  ReadTextProperties(question, out);
}

}  // namespace fi
