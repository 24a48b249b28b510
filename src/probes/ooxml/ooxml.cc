// The package's relationships name its main part; "[Content_Types].xml" says what kind of content
// that has, for the part itself ("Override") or for all parts of its extension ("Default"); the
// extended properties hold the version of the application that wrote it.

#include "probes/ooxml/ooxml.h"

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/package.h"
#include "platform/xml.h"
#include "probes/ooxml/ooxml_content_types.h"
#include "probes/ooxml/ooxml_version.h"
#include "probes/ooxml/opc_package.h"
#include "probes/ooxml/report_workbook.h"
#include "registry/format_ids.h"
#include "stream/xml_scan.h"

namespace fi {
namespace {

constexpr char kDatabaseTemplateType[] =
    "http://schemas.microsoft.com/office/access/2005/04/template/start";

// The first that the package has names the main part.
constexpr const char* kMainPartTypes[] = {
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument",
    "http://schemas.microsoft.com/office/2006/relationships/officeDocument",
    "http://schemas.microsoft.com/xps/2005/06/fixedrepresentation",
    "http://schemas.openxmlformats.org/package/2006/relationships",
    "http://purl.oclc.org/ooxml/officeDocument/relationships/officeDocument",
    "http://schemas.microsoft.com/visio/2010/relationships/document",
};

constexpr char kPropertiesType[] =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/extended-properties";
constexpr char kStrictPropertiesType[] =
    "http://purl.oclc.org/ooxml/officeDocument/relationships/extendedProperties";

enum : uint32_t { kTagAppVersion = 101, kTagTitlesOfParts = 102, kTagVector = 201 };
constexpr UTXMLTagName kPropertiesTags[] = {{kTagAppVersion, "AppVersion"},
                                            {kTagTitlesOfParts, "TitlesOfParts"}};
constexpr UTXMLTagName kValueTypesTags[] = {{kTagVector, "vector"}};

// Of "16.0300", as applications write it, the first two characters count.
constexpr uint32_t kMostVersionCharacters = 16;

// Whether the entry that the reader stands at is for the part. Deliberate: a target that begins
// with a slash fits no part name, though it may be the same part.
bool IsEntryOf(UTXMLReader* reader, uint32_t tag, std::u16string_view target) {
  if (tag == kTagDefault) {
    const std::u16string_view extension = Attribute(reader, "Extension");
    return extension.data() != nullptr && extension == opc::ExtensionOrWholeName(target);
  }
  if (tag != kTagOverride) return false;
  const std::u16string_view name = Attribute(reader, "PartName");
  return !name.empty() && name.front() == u'/' && name.substr(1) == target;
}

// What the first entry for the part says that names a format; 1802 where there is none.
FormatId FormatOfPart(IOHandle* contentTypes, std::u16string_view target) {
  xml::ScopedReader reader(contentTypes);
  if (!reader || !AddContentTypesTags(reader.get())) return kFormatZip;
  FormatId id = kFormatZip;
  UTXMLTag tag{};
  while (id == kFormatZip && NextElement(reader.get(), &tag)) {
    if (IsEndTag(tag) || !IsEntryOf(reader.get(), tag.id, target)) continue;
    const std::u16string_view contentType = Attribute(reader.get(), "ContentType");
    if (contentType.data() != nullptr) id = FormatOfContentType(contentType.data());
  }
  return id;
}

struct ExtendedProperties {
  uint32_t appMajor = 0;    // 0: not stated
  uint32_t partsCount = 0;  // titles of parts
};

uint32_t ReadMajorVersion(UTXMLReader* reader) {
  std::array<char16_t, kMostVersionCharacters + 1> text{};
  uint32_t length = 0;
  uint32_t number = 0;
  if (UTXMLReadContent(reader, 1, text.data(), kMostVersionCharacters, &length) != kXmlOk) return 0;
  return UTXMLGetDecDWord(text.data(), &number, nullptr) == 0 ? number : 0;
}

ExtendedProperties ReadProperties(IOHandle* part) {
  ExtendedProperties properties;
  xml::ScopedReader reader(part);
  if (!reader ||
      !AddTagMap(reader.get(),
                 "http://schemas.openxmlformats.org/officeDocument/2006/extended-properties", 2,
                 kPropertiesTags) ||
      !AddTagMap(reader.get(), "http://purl.oclc.org/ooxml/officeDocument/extendedProperties", 2,
                 kPropertiesTags) ||
      !AddTagMap(reader.get(),
                 "http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes", 2,
                 kValueTypesTags)) {
    return properties;
  }
  bool inTitles = false;
  UTXMLTag tag{};
  while ((properties.appMajor == 0 || properties.partsCount == 0) &&
         NextElement(reader.get(), &tag)) {
    if (tag.id == kTagTitlesOfParts) inTitles = !IsEndTag(tag);
    if (IsEndTag(tag)) continue;
    if (tag.id == kTagAppVersion) properties.appMajor = ReadMajorVersion(reader.get());
    if (tag.id == kTagVector && inTitles) {
      const std::u16string_view size = Attribute(reader.get(), "size");
      if (size.data() != nullptr) {
        (void)UTXMLGetDecDWord(size.data(), &properties.partsCount, nullptr);
      }
    }
  }
  return properties;
}

}  // namespace

bool FindMainPart(PKGHandle* package, PKGRelationship* mainPart) {
  for (const char* type : kMainPartTypes) {
    if (opc::FindRelationship(package, type, mainPart)) return true;
  }
  return false;
}

FormatId RefineByProperties(PKGHandle* package, FormatId id) {
  opc::OwnedPart part = opc::OpenByType(package, kPropertiesType);
  bool strict = false;
  if (part == nullptr) {
    part = opc::OpenByType(package, kStrictPropertiesType);
    strict = true;
  }
  if (part == nullptr) return id;
  const ExtendedProperties properties = ReadProperties(PKGGetHIOFILE(part.get()));
  if (id == kFormatExcelXmlWorkbook2007 && properties.partsCount == 0 &&
      IsReportWorkbook(package)) {
    return kFormatMobileReportWorkbook;
  }
  return RefineByVersion(id, properties.appMajor, strict);
}

PackageAnswer OfficeOpenXmlProbe(IOHandle* package) {
  const opc::OwnedPackage opened = opc::OpenPackage(package);
  if (opened == nullptr) return kGoOn;
  PKGRelationship relationship{};
  if (opc::FindRelationship(opened.get(), kDatabaseTemplateType, &relationship)) {
    return EndsWith(kFormatAccessTemplatePackage);
  }
  if (!FindMainPart(opened.get(), &relationship)) return kChainEnds;
  const std::u16string_view target(relationship.target, relationship.targetLength);
  PackageAnswer answer = kChainEnds;
  if (const opc::OwnedPart part = opc::OpenByName(opened.get(), u"[Content_Types].xml")) {
    answer.id = FormatOfPart(PKGGetHIOFILE(part.get()), target);
  }
  if (HasVersions(answer.id)) answer.id = RefineByProperties(opened.get(), answer.id);
  return answer;
}

}  // namespace fi
