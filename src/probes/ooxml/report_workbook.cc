// A report has a sheet for each kind of data, named after it in English, with a table. The first
// column of the table is the running number, with the heading "#".

#include "probes/ooxml/report_workbook.h"

#include <cstdint>
#include <iterator>

#include "platform/xml.h"
#include "probes/ooxml/opc_package.h"
#include "stream/xml_scan.h"

namespace fi {
namespace {

constexpr char kWorkbookType[] =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument";
constexpr char kTableType[] =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/table";
constexpr char kSpreadsheetNamespace[] =
    "http://schemas.openxmlformats.org/spreadsheetml/2006/main";

constexpr uint32_t kWorkbookNumber = 42;
constexpr uint32_t kTableNumber = 3003;
constexpr uint32_t kAttributeNumber = 420;

enum : uint32_t { kTagTableColumn = 101, kTagSheets = 1001, kTagSheet = 1002 };
constexpr UTXMLTagName kWorkbookTags[] = {{kTagSheets, "sheets"}, {kTagSheet, "sheet"}};
constexpr UTXMLTagName kTableTags[] = {{kTagTableColumn, "tableColumn"}};

// The kinds of data, as bits of a mask; the summary is none.
constexpr UTXMLStringValue kReportSheets[] = {
    {1 << 5, "Application Usage"},
    {1 << 0, "Audio"},
    {1 << 6, "Calendar"},
    {1 << 1, "Call Log"},
    {1 << 7, "Configurations"},
    {1 << 2, "Contacts"},
    {1 << 8, "Databases"},
    {1 << 9, "Emails"},
    {1 << 11, "IP Connections"},
    {1 << 3, "Images"},
    {1 << 10, "Installed Applications"},
    {1 << 12, "Locations"},
    {1 << 13, "MMS Messages"},
    {1 << 14, "Passwords"},
    {1 << 4, "SMS Messages"},
    {0, "Summary"},
    {1 << 15, "Text"},
    {1 << 16, "User Accounts"},
    {1 << 17, "User Dictionary"},
    {1 << 18, "Web Bookmarks"},
    {1 << 19, "Web History"},
};

bool IsReportSheetName(const char16_t* name) {
  uint32_t kind = 0;
  return UTXMLFindStringInMap(name, kReportSheets, std::size(kReportSheets), &kind) != kXmlNotInMap;
}

// Moves the reader to the start of the first sheet.
bool FindFirstSheet(UTXMLReader* reader) {
  // Deliberate: here and for columns, unlike elsewhere, the answer kXmlNoElement ends the reading.
  UTXMLTag tag{};
  while (UTXMLReadNextTag(reader, &tag, nullptr) == kXmlOk) {
    if (tag.id == kTagSheets && IsEndTag(tag)) return false;
    if (tag.id == kTagSheet && !IsEndTag(tag)) return true;
  }
  return false;
}

// Whether the first column of id 1 is headed "#".
bool IsNumberedTable(PKGHandle* table) {
  xml::ScopedReader reader(PKGGetHIOFILE(table));
  if (!reader ||
      !AddTagMap(reader.get(), kSpreadsheetNamespace, kTableNumber, kTableTags, kAttributeNumber)) {
    return false;
  }
  UTXMLTag tag{};
  while (UTXMLReadNextTag(reader.get(), &tag, nullptr) == kXmlOk) {
    if (tag.id != kTagTableColumn || IsEndTag(tag)) continue;
    const std::u16string_view id = Attribute(reader.get(), "id", kAttributeNumber);
    uint32_t number = 0;
    if (id.data() == nullptr || UTXMLGetDecDWord(id.data(), &number, nullptr) != 0) continue;
    if (number == 1) return Attribute(reader.get(), "name", kAttributeNumber) == u"#";
  }
  return false;
}

}  // namespace

bool IsReportWorkbook(PKGHandle* package) {
  const opc::OwnedPart workbook = opc::OpenByType(package, kWorkbookType);
  if (workbook == nullptr) return false;
  xml::ScopedReader reader(PKGGetHIOFILE(workbook.get()));
  if (!reader || !AddTagMap(reader.get(), kSpreadsheetNamespace, kWorkbookNumber, kWorkbookTags,
                            kAttributeNumber)) {
    return false;
  }
  SetPackageOption(reader.get());
  if (!FindFirstSheet(reader.get())) return false;

  const std::u16string_view name = Attribute(reader.get(), "name", kAttributeNumber);
  if (name.empty() || !IsReportSheetName(name.data())) return false;
  const std::u16string_view sheetId = Attribute(reader.get(), "id", kAttributeNumber);
  if (sheetId.data() == nullptr) return false;
  const opc::OwnedPart sheet = opc::OpenById(workbook.get(), sheetId.data());
  PKGRelationship tableRelationship{};
  if (sheet == nullptr || !opc::FindRelationship(sheet.get(), kTableType, &tableRelationship)) {
    return false;
  }
  const opc::OwnedPart table = opc::OpenById(sheet.get(), tableRelationship.id);
  return table != nullptr && IsNumberedTable(table.get());
}

}  // namespace fi
