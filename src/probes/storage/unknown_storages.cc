#include "probes/storage/unknown_storages.h"

#include "registry/format_ids.h"
#include "stream/child_stream.h"

namespace fi {
namespace {

// A class identifier from the fields that its text form shows; the last two as one number.
constexpr ClassId Guid(uint32_t first, uint32_t second, uint32_t third, uint64_t rest) {
  ClassId id{};
  for (size_t i = 0; i < 4; ++i) id[i] = static_cast<uint8_t>(first >> (8 * i));
  for (size_t i = 0; i < 2; ++i) id[4 + i] = static_cast<uint8_t>(second >> (8 * i));
  for (size_t i = 0; i < 2; ++i) id[6 + i] = static_cast<uint8_t>(third >> (8 * i));
  for (size_t i = 0; i < 8; ++i) id[8 + i] = static_cast<uint8_t>(rest >> (56 - 8 * i));
  return id;
}

struct ClassRow {
  ClassId classId;
  FormatId id;
};

constexpr uint64_t kOle = 0xC000000000000046;

constexpr ClassRow kClasses[] = {
    // Windows Installer: transform, package, patch.
    {Guid(0x000C1082, 0, 0, kOle), kFormatWindowsInstallerPackage},
    {Guid(0x000C1084, 0, 0, kOle), kFormatWindowsInstallerPackage},
    {Guid(0x000C1086, 0, 0, kOle), kFormatWindowsInstallerPackage},
    {Guid(0x1CDD8C7B, 0x81C0, 0x45A0, 0x9FED04143144CC1E), kFormatThreeDsMax},
    {Guid(0x18B8D021, 0xB4FD, 0x11D0, 0xA97E00A0C905410D), kFormatPhotoDraw},
    {Guid(0x56616800, 0xC154, 0x11CE, 0x855300AA00A1F95B), kFormatPhotoDraw},
    // StarOffice 3, 4 and 5: Writer, Calc, Impress, Chart, Math, Draw.
    {Guid(0xDC5C7E40, 0xB35C, 0x101B, 0x996104021C007002), kFormatStarOffice3},
    {Guid(0x8B04E9B0, 0x420E, 0x11D0, 0xA45E00A0249D57B1), kFormatStarOffice3},
    {Guid(0x3F543FA0, 0xB6A6, 0x101B, 0x996104021C007002), kFormatStarOffice3},
    {Guid(0x6361D441, 0x4235, 0x11D0, 0x89CB008029E4B0B1), kFormatStarOffice3},
    {Guid(0xAF10AAE0, 0xB36D, 0x101B, 0x996104021C007002), kFormatStarOffice3},
    {Guid(0x012D3CC0, 0x4216, 0x11D0, 0x89CB008029E4B0B1), kFormatStarOffice3},
    {Guid(0xFB9C99E0, 0x2C6D, 0x101C, 0x8E2C00001B4CC711), kFormatStarOffice3},
    {Guid(0x02B3B7E0, 0x4225, 0x11D0, 0x89CA008029E4B0B1), kFormatStarOffice3},
    {Guid(0xD4590460, 0x35FD, 0x101C, 0xB12A04021C007002), kFormatStarOffice3},
    {Guid(0x02B3B7E1, 0x4225, 0x11D0, 0x89CA008029E4B0B1), kFormatStarOffice3},
    {Guid(0x2E8905A0, 0x85BD, 0x11D1, 0x89D0008029E4B0B1), kFormatStarOffice3},
    {Guid(0x00021200, 0, 0, 0x00C0000000000046), kFormatPublisher95},
    {Guid(0x00021200, 0, 0, kOle), kFormatPublisher95},
    // SolidWorks: part, drawing, assembly.
    {Guid(0x83A33D30, 0x27C5, 0x11CE, 0xBFD400400513BB57), kFormatSolidWorks},
    {Guid(0x83A33D34, 0x27C5, 0x11CE, 0xBFD400400513BB57), kFormatSolidWorks},
    {Guid(0x83A33D36, 0x27C5, 0x11CE, 0xBFD400400513BB57), kFormatSolidWorks},
    // Inventor: part, assembly, drawing, presentation.
    {Guid(0x4D29B490, 0x49B2, 0x11D0, 0x93C37E0706000000), kFormatInventor},
    {Guid(0xE60F81E1, 0x49B3, 0x11D0, 0x93C37E0706000000), kFormatInventor},
    {Guid(0xBBF9FDF1, 0x52DC, 0x11D0, 0x8C040800090BE8EC), kFormatInventor},
    {Guid(0x76283A80, 0x50DD, 0x11D3, 0xA7E300C04F79D7BC), kFormatInventor},
};

struct StreamRow {
  const char* name;
  FormatId id;
};

// Streams that stand in documents of one program only, whatever the class.
constexpr StreamRow kStreams[] = {
    {"BasicFileInfo", kFormatRevit},
    {"DestList", kFormatJumpList},
    {"Dgn~H", kFormatMicroStationDesign8},
    {"Dgn~S", kFormatMicroStationDesign8},
    {"LtfHeader", kFormatPhotoImpact},
    {"PageMaker", kFormatPageMaker},
    {"SMNativeObjData", kFormatSoftMaker},
    {"StarCalcDocument", kFormatStarOffice3},
    {"StarChartDocument", kFormatStarOffice3},
    {"StarDrawDocument", kFormatStarOffice3},
    {"StarDrawDocument3", kFormatStarOffice3},
    {"StarMathDocument", kFormatStarOffice3},
    {"StarWriterDocument", kFormatStarOffice3},
    {"TravelLog", kFormatTravelLog},
    {"WorksheetInfo", kFormatMinitab},
    {"\x04JSRV_SummaryInformation", kFormatIchitaro8},
};

// The index of a thumbnail cache begins with its own length, 16, and its version.
bool IsThumbnailCatalogue(IOHandle* document) {
  const ChildStream catalogue(document, "Catalog");
  if (!catalogue || IdStreamGetWordLE(catalogue.get()) != 16) return false;
  const int32_t version = IdStreamGetWordLE(catalogue.get());
  return version >= 1 && version <= 7;
}

bool IsIchitaroHeader(IOHandle* document) {
  const ChildStream header(document, "Header");
  if (!header) return false;
  for (const char c : {'S', 's', 'm', 'g', 'V', '.', '0', '1'}) {
    if (IdStreamGetByte(header.get()) != static_cast<uint8_t>(c)) return false;
  }
  return true;
}

}  // namespace

FormatId ProbeUnknownStorage(IdentificationStream* stream, const ClassId& classId) {
  for (const ClassRow& row : kClasses) {
    if (row.classId == classId) return row.id;
  }
  IOHandle* document = stream->handle;
  for (const StreamRow& row : kStreams) {
    if (HasStream(document, row.name)) return row.id;
  }
  if (IsThumbnailCatalogue(document)) return kFormatThumbnailCache;
  return IsIchitaroHeader(document) ? kFormatIchitaro8 : kNoMatch;
}

}  // namespace fi
