// Main parts have content types such as
// "application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml" and
// "application/vnd.ms-excel.sheet.macroEnabled.main+xml"; their beginning tells the format.

#include "probes/ooxml/ooxml_content_types.h"

#include <iterator>
#include <string_view>

#include "registry/format_ids.h"
#include "stream/xml_scan.h"

namespace fi {
namespace {

struct ContentType {
  std::string_view beginning;  // behind the prefix of its table
  FormatId id;
};

constexpr std::string_view kOfficePrefix = "application/vnd.openxmlformats-officedocument.";
constexpr std::string_view kVendorPrefix = "application/vnd.";

constexpr ContentType kOfficeTypes[] = {
    {"wordprocessingml.document", kFormatWordXmlDocument2007},
    {"spreadsheetml.sheet", kFormatExcelXmlWorkbook2007},
    {"presentationml.presentation", kFormatPowerPointXmlPresentation2007},
    {"wordprocessingml.template", kFormatWordXmlTemplate2007},
    {"spreadsheetml.template", kFormatExcelXmlTemplate2007},
    {"presentationml.template", kFormatPowerPointXmlTemplate2007},
    {"presentationml.slideshow", kFormatPowerPointXmlSlideShow2007},
    {"themeManager", kFormatOfficeXmlTheme},
};

// The first that fits decides: the macro-enabled drawings stand before the plain ones, which are
// their prefixes. Deliberate: most texts lack the last letter of their word, so that a type that
// ends there fits too.
constexpr ContentType kVendorTypes[] = {
    {"ms-package.xps-fixeddocumen", kFormatXps},
    {"ms-excel.sheet.binary.macroEnable", kFormatExcelBinaryWorkbook2007},
    {"ms-word.document.macroEnable", kFormatWordXmlMacroDocument2007},
    {"ms-word.template.macroEnabledTemplat", kFormatWordXmlMacroTemplate2007},
    {"ms-excel.sheet.macroEnable", kFormatExcelXmlMacroWorkbook2007},
    {"ms-excel.template.macroEnable", kFormatExcelXmlMacroTemplate2007},
    {"ms-powerpoint.presentation.macroEnable", kFormatPowerPointXmlMacroPresentation2007},
    {"ms-powerpoint.template.macroEnable", kFormatPowerPointXmlMacroTemplate2007},
    {"ms-powerpoint.slideshow.macroEnable", kFormatPowerPointXmlMacroSlideShow2007},
    {"ms-excel.addin.macroEnable", kFormatExcelXmlMacroAddIn2007},
    {"ms-visio.drawing.macroEnabled", kFormatVisioXmlMacroDrawing2013},
    {"ms-visio.drawing", kFormatVisioXmlDrawing2013},
    {"ms-visio.template.macroEnabled", kFormatVisioXmlMacroDrawingTemplate2013},
    {"ms-visio.template", kFormatVisioXmlDrawingTemplate2013},
    {"ms-visio.stencil.macroEnabled", kFormatVisioXmlMacroStencil2013},
    {"ms-visio.stencil", kFormatVisioXmlStencil2013},
};

using Comparison = bool (*)(const char16_t* text, std::string_view prefix);

template <size_t count>
FormatId FirstThatFits(const char16_t* text, const ContentType (&types)[count], Comparison fits) {
  for (const ContentType& type : types) {
    if (fits(text, type.beginning)) return type.id;
  }
  return kFormatZip;
}

FormatId FormatBy(const char16_t* contentType, Comparison fits) {
  if (fits(contentType, kOfficePrefix)) {
    return FirstThatFits(contentType + kOfficePrefix.size(), kOfficeTypes, fits);
  }
  if (fits(contentType, kVendorPrefix)) {
    return FirstThatFits(contentType + kVendorPrefix.size(), kVendorTypes, fits);
  }
  return kFormatZip;
}

constexpr UTXMLTagName kTags[] = {
    {kTagDefault, "Default"}, {kTagOverride, "Override"}, {kTagTypes, "Types"}};

}  // namespace

bool AddContentTypesTags(UTXMLReader* reader) {
  return AddTagMap(reader, "http://schemas.openxmlformats.org/package/2006/content-types", 1,
                   kTags) &&
         AddTagMap(reader, "http://schemas.microsoft.com/package/2005/06/content-types", 2, kTags);
}

FormatId FormatOfContentType(const char16_t* contentType) {
  return FormatBy(contentType, BeginsWith);
}

FormatId FormatOfContentTypeAnyCase(const char16_t* contentType) {
  return FormatBy(contentType, BeginsWithAnyCase);
}

}  // namespace fi
