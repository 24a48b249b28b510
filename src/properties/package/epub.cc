#include "properties/package/epub.h"

#include <string_view>

#include "properties/package/member_text.h"

namespace fi {
namespace {

// What vendors of rights management put beside the encrypted members.
constexpr struct {
  std::string_view member;
  std::string_view scheme;
} kRights[] = {
    {"META-INF/license.lcpl", "LCP"},
    {"META-INF/sinf.xml", "FairPlay"},
    {"META-INF/rights.xml", "ADEPT"},
};

// Fonts are obfuscated, not protected, by two methods; whatever else is listed is encrypted.
bool EncryptsMoreThanFonts(std::string_view encryption) {
  constexpr std::string_view kMethod = "EncryptionMethod Algorithm=";
  for (size_t at = encryption.find(kMethod); at != std::string_view::npos;
       at = encryption.find(kMethod, at + 1)) {
    std::string_view name = encryption.substr(at + kMethod.size() + 1);
    name = name.substr(0, name.find_first_of("\"'"));
    if (name != "http://www.idpf.org/2008/embedding" && name != "http://ns.adobe.com/pdf/enc#RC") {
      return true;
    }
  }
  return false;
}

}  // namespace

void ReadEpubProperties(IOHandle* package, PropertySet& out) {
  constexpr std::string_view kEncryption = "META-INF/encryption.xml";
  const MemberText container(package, "META-INF/container.xml");
  const std::string_view path = Between(container.View(), "full-path=\"", "\"");
  if (!path.empty()) {
    const MemberText publication(package, path);
    const std::string_view element = Between(publication.View(), "<package", ">");
    out.Set(Property::kVersion, Between(element, " version=\"", "\""), path);
  }
  const MemberText encryption(package, kEncryption);
  if (!EncryptsMoreThanFonts(encryption.View())) {
    return out.Set(Property::kEncryption, "none", kEncryption);
  }
  out.Set(Property::kEncryption, "rights", kEncryption);
  for (const auto& rights : kRights) {
    if (HasMember(package, rights.member)) {
      out.Set(Property::kEncryptionScheme, rights.scheme, rights.member);
    }
  }
}

}  // namespace fi
