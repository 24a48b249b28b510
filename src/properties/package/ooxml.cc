#include "properties/package/ooxml.h"

#include <string_view>

#include "properties/package/member_text.h"

namespace fi {
namespace {

// Where programs put the main part; a package that puts it elsewhere tells no profile.
constexpr std::string_view kMainParts[] = {"word/document.xml", "xl/workbook.xml",
                                           "ppt/presentation.xml"};

constexpr std::string_view kMacroParts[] = {"word/vbaProject.bin", "xl/vbaProject.bin",
                                            "ppt/vbaProject.bin", "visio/vbaProject.bin"};

constexpr std::string_view kSignatures[] = {"_xmlsignatures/origin.sigs",
                                            "package/services/digital-signature/origin.psdsor"};

void ReadProfile(IOHandle* package, PropertySet& out) {
  for (const std::string_view part : kMainParts) {
    const MemberText text(package, part);
    if (!text) continue;
    if (text.View().find("http://purl.oclc.org/ooxml/") != std::string_view::npos) {
      out.Set(Property::kProfile, "strict", part);
    } else if (text.View().find("http://schemas.openxmlformats.org/") != std::string_view::npos) {
      out.Set(Property::kProfile, "transitional", part);
    }
    return;
  }
}

}  // namespace

void ReadOfficeOpenXmlProperties(IOHandle* package, PropertySet& out) {
  constexpr std::string_view kApplication = "docProps/app.xml";
  out.Set(Property::kEncryption, "none", "package");
  ReadProfile(package, out);
  const MemberText application(package, kApplication);
  out.Set(Property::kVersion, Between(application.View(), "<AppVersion>", "</AppVersion>"),
          kApplication);
  for (const std::string_view part : kMacroParts) {
    if (HasMember(package, part)) out.Set(Property::kMacros, "yes", part);
  }
  for (const std::string_view part : kSignatures) {
    if (HasMember(package, part)) out.Set(Property::kSigned, "yes", part);
  }
}

}  // namespace fi
