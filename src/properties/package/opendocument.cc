#include "properties/package/opendocument.h"

#include <string_view>

#include "properties/package/member_text.h"
#include "properties/record/short_text.h"

namespace fi {
namespace {

// Members of Basic and of other languages; an empty document has none.
constexpr std::string_view kMacroMembers[] = {"Basic/script-lc.xml", "Basic/Standard/script-lb.xml",
                                              "Scripts/"};

// An algorithm is named by a word or by the fragment or last part of an address.
void ReadScheme(std::string_view manifest, std::string_view place, PropertySet& out) {
  std::string_view name = Between(manifest, "manifest:algorithm-name=\"", "\"");
  const size_t mark = name.find_last_of("#/");
  if (mark != std::string_view::npos) name.remove_prefix(mark + 1);
  if (name == "aes256-cbc") name = "AES-256";
  if (name == "aes256-gcm") name = "AES-256 GCM";
  out.Set(Property::kEncryptionScheme, name, place);
}

}  // namespace

void ReadOpenDocumentProperties(IOHandle* package, PropertySet& out) {
  constexpr std::string_view kManifest = "META-INF/manifest.xml";
  const MemberText manifest(package, kManifest);
  const bool isEncrypted = manifest.View().find("encryption-data") != std::string_view::npos;
  if (manifest) out.Set(Property::kEncryption, isEncrypted ? "password" : "none", kManifest);
  if (isEncrypted) ReadScheme(manifest.View(), kManifest, out);
  out.Set(Property::kVersion, Between(manifest.View(), "manifest:version=\"", "\""), kManifest);
  if (!isEncrypted && !out.Has(Property::kVersion)) {
    const MemberText content(package, "content.xml");
    out.Set(Property::kVersion, Between(content.View(), "office:version=\"", "\""), "content.xml");
  }
  for (const std::string_view member : kMacroMembers) {
    if (HasMember(package, member)) out.Set(Property::kMacros, "yes", member);
  }
  constexpr std::string_view kSignatures = "META-INF/documentsignatures.xml";
  if (HasMember(package, kSignatures)) out.Set(Property::kSigned, "yes", kSignatures);
}

}  // namespace fi
