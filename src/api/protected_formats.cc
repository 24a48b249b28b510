#include "api/protected_formats.h"

#include "registry/format_ids.h"

namespace fi {
namespace {

struct ProtectedRow {
  FormatId id;
  FormatId protectedId;
};

constexpr ProtectedRow kProtected[] = {
    // Word.
    {1126, 1317},
    {1146, 1317},
    {1185, 1317},
    {1186, 1317},
    // Deliberate: Word packages get the counterpart of the spreadsheets.
    {1312, 1458},
    {1313, 1458},
    // Excel.
    {1405, 1458},
    {1415, 1458},
    {1419, 1458},
    {1436, 1458},
    {1437, 1458},
    {1438, 1458},
    {1439, 1458},
    {1440, 1458},
    {1441, 1458},
    {1446, 1458},
    {1448, 1458},
    {1451, 1458},
    {1455, 1459},
    {1456, 1459},
    {1457, 1459},
    // PowerPoint.
    {1538, 1642},
    {1540, 1642},
    {1543, 1642},
    {1581, 1642},
    {1592, 1642},
    {1600, 1642},
    {1635, 1643},
    {1636, 1643},
    {1637, 1643},
};

constexpr FormatId kProtectedOther = kFormatRightsManagedOther;

}  // namespace

FormatId ProtectedFormat(FormatId id) {
  for (const ProtectedRow& row : kProtected) {
    if (row.id == id) return row.protectedId;
  }
  return kProtectedOther;
}

}  // namespace fi
