#include "probes/ooxml/ooxml_repair.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/io.h"
#include "platform/package.h"
#include "platform/xml.h"
#include "probes/ooxml/ooxml.h"
#include "probes/ooxml/ooxml_content_types.h"
#include "probes/ooxml/ooxml_version.h"
#include "probes/ooxml/opc_package.h"
#include "registry/format_ids.h"
#include "stream/id_stream.h"
#include "stream/package_member.h"
#include "stream/xml_scan.h"

namespace fi {
namespace {

// Relationships of the package that name the format by themselves.
struct TellingRelationship {
  const char* type;
  FormatId id;
};

constexpr TellingRelationship kTellingRelationships[] = {
    {"http://schemas.openxps.org/oxps/v1.0/fixedrepresentation", kFormatOpenXps},
    {"http://schemas.microsoft.com/3dmanufacturing/2013/01/3dmodel", kFormatThreeMf},
    {"http://schemas.microsoft.com/packaging/2010/07/manifest", kFormatNuGetPackage},
};

constexpr std::string_view kAddInType = "application/vnd.ms-powerpoint.addin.macroEnabled.main+xml";

// How the content type of a main part ends: other parts of documents have the same beginnings.
constexpr std::string_view kMainEnd = ".main+xml";
constexpr std::string_view kFixedDocumentType =
    "application/vnd.ms-package.xps-fixeddocumentsequence+xml";

// Entries of the content types that are looked at. A presentation of a thousand slides has some
// three thousand.
constexpr uint32_t kMostEntries = 40000;

// Bytes of damaged content types in which that of a main part is looked for, and the longest of
// these with room to spare.
constexpr uint32_t kDamagedBytes = 8192;
constexpr size_t kLongestType = 128;

bool EqualAnyCase(std::u16string_view a, std::u16string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char16_t left, char16_t right) {
    return FoldCase(left) == FoldCase(right);
  });
}

std::u16string_view WithoutRoot(std::u16string_view name) {
  return name.substr(name.starts_with(u'/') ? 1 : 0);
}

FormatId FormatOfType(std::u16string_view contentType) {
  if (BeginsWithAnyCase(contentType.data(), kAddInType)) return kFormatPowerPointXmlMacroAddIn;
  return FormatOfContentTypeAnyCase(contentType.data());
}

bool IsMainType(std::u16string_view contentType) {
  if (BeginsWithAnyCase(contentType.data(), kFixedDocumentType)) return true;
  return contentType.size() > kMainEnd.size() &&
         BeginsWithAnyCase(contentType.data() + contentType.size() - kMainEnd.size(), kMainEnd);
}

// What the entries say, each 1802 where none names a format.
struct Entries {
  FormatId ofPart = kFormatZip;
  FormatId ofExtension = kFormatZip;
  FormatId ofAnyMainPart = kFormatZip;

  FormatId Decision() const {
    if (ofPart != kFormatZip) return ofPart;
    return ofExtension != kFormatZip ? ofExtension : ofAnyMainPart;
  }
};

// Looks at the entry that the reader stands at.
void ReadEntry(UTXMLReader* reader, uint32_t tag, std::u16string_view target, Entries* entries) {
  const std::u16string_view contentType = Attribute(reader, "ContentType");
  if (contentType.empty()) return;
  const FormatId id = FormatOfType(contentType);
  if (id == kFormatZip) return;
  if (tag == kTagOverride) {
    const std::u16string_view name = WithoutRoot(Attribute(reader, "PartName"));
    if (!target.empty() && EqualAnyCase(name, target)) entries->ofPart = id;
  } else if (!target.empty() &&
             EqualAnyCase(Attribute(reader, "Extension"), opc::ExtensionOrNothing(target))) {
    entries->ofExtension = id;
  }
  if (entries->ofAnyMainPart == kFormatZip && IsMainType(contentType)) entries->ofAnyMainPart = id;
}

FormatId FormatByContentTypes(IOHandle* contentTypes, std::u16string_view target) {
  xml::ScopedReader reader(contentTypes);
  if (!reader || !AddContentTypesTags(reader.get())) return kFormatZip;
  Entries entries;
  UTXMLTag tag{};
  for (uint32_t i = 0; i < kMostEntries && entries.ofPart == kFormatZip; ++i) {
    if (!NextElement(reader.get(), &tag)) break;
    if (IsEndTag(tag) || (tag.id != kTagDefault && tag.id != kTagOverride)) continue;
    ReadEntry(reader.get(), tag.id, target, &entries);
  }
  return entries.Decision();
}

// The content types may be no XML any more, but the attribute that tells is whole.
FormatId FormatByDamagedContentTypes(IOHandle* contentTypes) {
  constexpr std::string_view kAttribute = "ContentType=\"";
  if (!io::Seek(contentTypes, kIoFromStart, 0)) return kFormatZip;
  char buffer[kDamagedBytes];
  std::string_view rest = ReadHead(contentTypes, buffer);
  for (size_t at = rest.find(kAttribute); at != std::string_view::npos;
       at = rest.find(kAttribute)) {
    rest.remove_prefix(at + kAttribute.size());
    const size_t size = std::min(rest.find('"'), rest.size());
    if (size >= kLongestType || size == rest.size()) continue;
    std::array<char16_t, kLongestType> contentType{};
    std::transform(rest.begin(), rest.begin() + static_cast<ptrdiff_t>(size), contentType.begin(),
                   [](char c) { return static_cast<char16_t>(static_cast<uint8_t>(c)); });
    const std::u16string_view text(contentType.data(), size);
    if (!IsMainType(text)) continue;
    if (const FormatId id = FormatOfType(text); id != kFormatZip) return id;
  }
  return kFormatZip;
}

}  // namespace

FormatId RepairedOfficeOpenXml(IOHandle* view) {
  const opc::OwnedPackage package = opc::OpenPackage(view);
  PKGRelationship relationship{};
  std::u16string_view target;
  if (package != nullptr) {
    for (const TellingRelationship& telling : kTellingRelationships) {
      if (opc::FindRelationship(package.get(), telling.type, &relationship)) return telling.id;
    }
    if (FindMainPart(package.get(), &relationship)) {
      target = WithoutRoot({relationship.target, relationship.targetLength});
    }
  }
  const io::OwnedHandle contentTypes = OpenMember(view, "[Content_Types].xml");
  if (contentTypes == nullptr) return kNoMatch;
  FormatId id = FormatByContentTypes(contentTypes.get(), target);
  if (id == kFormatZip) id = FormatByDamagedContentTypes(contentTypes.get());
  if (id == kFormatZip) return kNoMatch;
  return package != nullptr && HasVersions(id) ? RefineByProperties(package.get(), id) : id;
}

}  // namespace fi
