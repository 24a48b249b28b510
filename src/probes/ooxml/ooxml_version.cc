#include "probes/ooxml/ooxml_version.h"

#include "registry/format_ids.h"

namespace fi {
namespace {

struct Generations {
  FormatId base;
  FormatId v2010;
  FormatId v2013;
  FormatId v2016;
};

constexpr Generations kGenerations[] = {
    {kFormatWordXmlDocument2007, kFormatWordXmlDocument2010, kFormatWordXmlDocument2013,
     kFormatWordXmlDocument2016},
    {kFormatWordXmlTemplate2007, kFormatWordXmlTemplate2010, kFormatWordXmlTemplate2013,
     kFormatWordXmlTemplate2016},
    {kFormatWordXmlMacroDocument2007, kFormatWordXmlMacroDocument2010,
     kFormatWordXmlMacroDocument2013, kFormatWordXmlMacroDocument2016},
    {kFormatWordXmlMacroTemplate2007, kFormatWordXmlMacroTemplate2010,
     kFormatWordXmlMacroTemplate2013, kFormatWordXmlMacroTemplate2016},
    {kFormatExcelXmlWorkbook2007, kFormatExcelXmlWorkbook2010, kFormatExcelXmlWorkbook2013,
     kFormatExcelXmlWorkbook2016},
    {kFormatExcelBinaryWorkbook2007, kFormatExcelBinaryWorkbook2010, kFormatExcelBinaryWorkbook2013,
     kFormatExcelBinaryWorkbook2016},
    {kFormatExcelXmlTemplate2007, kFormatExcelXmlTemplate2010, kFormatExcelXmlTemplate2013,
     kFormatExcelXmlTemplate2016},
    {kFormatExcelXmlMacroWorkbook2007, kFormatExcelXmlMacroWorkbook2010,
     kFormatExcelXmlMacroWorkbook2013, kFormatExcelXmlMacroWorkbook2016},
    {kFormatExcelXmlMacroTemplate2007, kFormatExcelXmlMacroTemplate2010,
     kFormatExcelXmlMacroTemplate2013, kFormatExcelXmlMacroTemplate2016},
    {kFormatExcelXmlMacroAddIn2007, kFormatExcelXmlMacroAddIn2010, kFormatExcelXmlMacroAddIn2013,
     kFormatExcelXmlMacroAddIn2016},
    {kFormatPowerPointXmlPresentation2007, kFormatPowerPointXmlPresentation2010,
     kFormatPowerPointXmlPresentation2013, kFormatPowerPointXmlPresentation2016},
    {kFormatPowerPointXmlTemplate2007, kFormatPowerPointXmlTemplate2010,
     kFormatPowerPointXmlTemplate2013, kFormatPowerPointXmlTemplate2016},
    {kFormatPowerPointXmlMacroPresentation2007, kFormatPowerPointXmlMacroPresentation2010,
     kFormatPowerPointXmlMacroPresentation2013, kFormatPowerPointXmlMacroPresentation2016},
    {kFormatPowerPointXmlMacroTemplate2007, kFormatPowerPointXmlMacroTemplate2010,
     kFormatPowerPointXmlMacroTemplate2013, kFormatPowerPointXmlMacroTemplate2016},
    {kFormatPowerPointXmlSlideShow2007, kFormatPowerPointXmlSlideShow2010,
     kFormatPowerPointXmlSlideShow2013, kFormatPowerPointXmlSlideShow2016},
    {kFormatPowerPointXmlMacroSlideShow2007, kFormatPowerPointXmlMacroSlideShow2010,
     kFormatPowerPointXmlMacroSlideShow2013, kFormatPowerPointXmlMacroSlideShow2016},
};

// Documents whose strict form has identifiers of its own, in their refined form. There are none for
// 2010, nor for templates and macro-enabled documents.
struct StrictForm {
  FormatId transitional;
  FormatId strict;
};

constexpr StrictForm kStrictForms[] = {
    {kFormatWordXmlDocument2013, kFormatWordStrictXmlDocument2013},
    {kFormatWordXmlDocument2016, kFormatWordStrictXmlDocument2016},
    {kFormatExcelXmlWorkbook2013, kFormatExcelStrictXmlWorkbook2013},
    {kFormatExcelXmlWorkbook2016, kFormatExcelStrictXmlWorkbook2016},
    {kFormatPowerPointXmlPresentation2013, kFormatPowerPointStrictXmlPresentation2013},
    {kFormatPowerPointXmlPresentation2016, kFormatPowerPointStrictXmlPresentation2016},
};

const Generations* FindGenerations(FormatId id) {
  for (const Generations& row : kGenerations) {
    if (row.base == id) return &row;
  }
  return nullptr;
}

}  // namespace

bool HasVersions(FormatId id) { return FindGenerations(id) != nullptr; }

FormatId RefineByVersion(FormatId id, uint32_t appMajor, bool strict) {
  const Generations* row = FindGenerations(id);
  if (row == nullptr || appMajor < 14) return id;
  const FormatId refined = appMajor == 14 ? row->v2010 : appMajor == 15 ? row->v2013 : row->v2016;
  if (!strict) return refined;
  for (const StrictForm& form : kStrictForms) {
    if (form.transitional == refined) return form.strict;
  }
  return refined;
}

}  // namespace fi
