#include "properties/package/package.h"

#include <string_view>

#include "properties/archive/zip.h"
#include "properties/package/epub.h"
#include "properties/package/member_text.h"
#include "properties/package/ooxml.h"
#include "properties/package/opendocument.h"
#include "registry/format_ids.h"

namespace fi {
namespace {

constexpr std::string_view kIworkVerifier = ".iwpv2";

void ReadIworkProperties(IOHandle* package, PropertySet& out) {
  if (HasMember(package, kIworkVerifier)) {
    out.Set(Property::kEncryption, "password", kIworkVerifier);
    out.Set(Property::kEncryptionScheme, "AES-128", kIworkVerifier);
  } else {
    out.Set(Property::kEncryption, "none", "package");
  }
}

}  // namespace

void ReadPackageProperties(const PropertyQuestion& question, PropertySet& out) {
  const io::OwnedHandle package = OpenPackage(question.stream->handle);
  if (package == nullptr) return ReadZipProperties(question, out);
  if (question.id == kFormatEpub) return ReadEpubProperties(package.get(), out);
  if (HasMember(package.get(), "[Content_Types].xml")) {
    return ReadOfficeOpenXmlProperties(package.get(), out);
  }
  if (HasMember(package.get(), "META-INF/manifest.xml")) {
    return ReadOpenDocumentProperties(package.get(), out);
  }
  if (HasMember(package.get(), "Index/Document.iwa") || HasMember(package.get(), "Index.zip") ||
      HasMember(package.get(), kIworkVerifier)) {
    return ReadIworkProperties(package.get(), out);
  }
  ReadZipProperties(question, out);
}

}  // namespace fi
