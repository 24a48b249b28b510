#include <algorithm>
#include <iterator>
#include <string_view>

#include "properties/puid/puid.h"
#include "registry/format_ids.h"

namespace fi {
namespace {

struct Row {
  FormatId id;
  Property property;
  std::string_view value;  // of the property, or one of several divided by ", "
  uint16_t puid;
};

constexpr uint16_t X(uint16_t number) { return static_cast<uint16_t>(kOtherSeries + number); }

// The first row of a format that fits decides: a subset stands before the versions.
constexpr Row kRows[] = {
    {kFormatPdf, Property::kProfile, "PDF/A-1a", 95},
    {kFormatPdf, Property::kProfile, "PDF/A-1b", 354},
    {kFormatPdf, Property::kProfile, "PDF/A-2a", 476},
    {kFormatPdf, Property::kProfile, "PDF/A-2b", 477},
    {kFormatPdf, Property::kProfile, "PDF/A-2u", 478},
    {kFormatPdf, Property::kProfile, "PDF/A-3a", 479},
    {kFormatPdf, Property::kProfile, "PDF/A-3b", 480},
    {kFormatPdf, Property::kProfile, "PDF/A-3u", 481},
    {kFormatPdf, Property::kProfile, "PDF/A-4", 1910},
    {kFormatPdf, Property::kProfile, "PDF/A-4e", 1911},
    {kFormatPdf, Property::kProfile, "PDF/A-4f", 1912},
    {kFormatPdf, Property::kProfile, "PDF/X-1a:2001", 157},
    {kFormatPdf, Property::kProfile, "PDF/X-1a:2003", 146},
    {kFormatPdf, Property::kProfile, "PDF/X-2:2003", 147},
    {kFormatPdf, Property::kProfile, "PDF/X-3:2002", 158},
    {kFormatPdf, Property::kProfile, "PDF/X-3:2003", 148},
    {kFormatPdf, Property::kProfile, "PDF/X-4", 488},
    {kFormatPdf, Property::kProfile, "PDF/X-4p", 489},
    {kFormatPdf, Property::kProfile, "PDF/X-5g", 490},
    {kFormatPdf, Property::kProfile, "PDF/X-5pg", 491},
    {kFormatPdf, Property::kProfile, "PDF/X-5n", 492},
    {kFormatPdf, Property::kProfile, "PDF/UA-1", 2050},
    {kFormatPdf, Property::kVersion, "1.0", 14},
    {kFormatPdf, Property::kVersion, "1.1", 15},
    {kFormatPdf, Property::kVersion, "1.2", 16},
    {kFormatPdf, Property::kVersion, "1.3", 17},
    {kFormatPdf, Property::kVersion, "1.4", 18},
    {kFormatPdf, Property::kVersion, "1.5", 19},
    {kFormatPdf, Property::kVersion, "1.6", 20},
    {kFormatPdf, Property::kVersion, "1.7", 276},
    {kFormatPdf, Property::kVersion, "2.0", 1129},

    {kFormatTiff, Property::kVersion, "1.0.0.0", 436},
    {kFormatTiff, Property::kVersion, "1.1.0.0", 152},
    {kFormatTiff, Property::kVersion, "1.2.0.0", 437},
    {kFormatTiff, Property::kVersion, "1.3.0.0", 438},
    {kFormatTiff, Property::kVersion, "1.4.0.0", 730},
    {kFormatTiff, Property::kProfile, "TIFF/EP", 154},
    {kFormatTiff, Property::kProfile, "GeoTIFF", 155},
    {kFormatGif, Property::kVersion, "87a", 3},
    {kFormatGif, Property::kVersion, "89a", 4},
    {kFormatPng, Property::kProfile, "APNG", 935},
    {kFormatPng, Property::kVersion, "1.0", 11},
    {kFormatPng, Property::kVersion, "1.1", 12},
    {kFormatPng, Property::kVersion, "1.2", 13},
    {kFormatBmp, Property::kVersion, "Windows 3", 116},
    {kFormatBmp, Property::kVersion, "Windows 3 NT", 117},
    {kFormatBmp, Property::kVersion, "Windows 4", 118},
    {kFormatWebP, Property::kProfile, "lossy", 566},
    {kFormatWebP, Property::kProfile, "lossless", 567},
    {kFormatWebP, Property::kProfile, "extended", 568},
    {kFormatJpeg2000, Property::kProfile, "jp2", X(392)},
    {kFormatJpeg2000, Property::kProfile, "jpx", 151},
    {kFormatJpeg2000, Property::kProfile, "code stream", 1794},

    {kFormatHtml, Property::kVersion, "HTML 2.0", 97},
    {kFormatHtml, Property::kVersion, "HTML 3.2", 98},
    {kFormatHtml, Property::kVersion, "HTML 3.2 Final", 98},
    {kFormatHtml, Property::kVersion, "HTML 4.0", 99},
    {kFormatHtml, Property::kVersion, "HTML 4.0 Transitional", 99},
    {kFormatHtml, Property::kVersion, "HTML 4.0 Frameset", 99},
    {kFormatHtml, Property::kVersion, "HTML 4.01", 100},
    {kFormatHtml, Property::kVersion, "HTML 4.01 Transitional", 100},
    {kFormatHtml, Property::kVersion, "HTML 4.01 Frameset", 100},
    {kFormatHtml, Property::kVersion, "HTML 5", 471},
    {kFormatHtml, Property::kVersion, "XHTML 1.0 Strict", 102},
    {kFormatHtml, Property::kVersion, "XHTML 1.0 Transitional", 102},
    {kFormatHtml, Property::kVersion, "XHTML 1.0 Frameset", 102},
    {kFormatHtml, Property::kVersion, "XHTML 1.1", 103},
    {kFormatXml, Property::kVersion, "1.0", 101},
    {kFormatXml, Property::kVersion, "1.1", 1776},
    {kFormatSvg, Property::kVersion, "1.0", 91},
    {kFormatSvg, Property::kVersion, "1.1", 92},

    {kFormatDxfText, Property::kVersion, "AC1.2", 65},
    {kFormatDxfText, Property::kVersion, "AC1.3", 66},
    {kFormatDxfText, Property::kVersion, "AC1.40", 67},
    {kFormatDxfText, Property::kVersion, "AC1.50", 68},
    {kFormatDxfText, Property::kVersion, "AC2.10", 69},
    {kFormatDxfText, Property::kVersion, "AC2.21", 70},
    {kFormatDxfText, Property::kVersion, "AC1002", 71},
    {kFormatDxfText, Property::kVersion, "AC1003", 72},
    {kFormatDxfText, Property::kVersion, "AC1004", 73},
    {kFormatDxfText, Property::kVersion, "AC1006", 74},
    {kFormatDxfText, Property::kVersion, "AC1009", 75},
    {kFormatDxfText, Property::kVersion, "AC1012", 76},
    {kFormatDxfText, Property::kVersion, "AC1014", 77},
    {kFormatDxfText, Property::kVersion, "AC1015", 78},
    {kFormatDxfText, Property::kVersion, "AC1018", 79},
    {kFormatDxfText, Property::kVersion, "AC1021", 433},
    {kFormatDxfText, Property::kVersion, "AC1024", 435},
    {kFormatDxfText, Property::kVersion, "AC1027", 532},
    {kFormatDxfText, Property::kVersion, "AC1032", 1389},
    {kFormatDxfBinary, Property::kVersion, "AC1006", 80},
    {kFormatDxfBinary, Property::kVersion, "AC1009", 81},
    {kFormatDxfBinary, Property::kVersion, "AC1012", 82},
    {kFormatDxfBinary, Property::kVersion, "AC1014", 83},
    {kFormatDxfBinary, Property::kVersion, "AC1015", 84},
    {kFormatDxfBinary, Property::kVersion, "AC1018", 85},
    {kFormatDxfBinary, Property::kVersion, "AC1021", 1390},

    {kFormatExecutable, Property::kProfile, "PE32", 899},
    {kFormatExecutable, Property::kProfile, "PE32+", 900},
    {kFormatExecutable, Property::kProfile, "NE", X(410)},
    {kFormatMachO, Property::kProfile, "32-bit", 692},
    {kFormatMachO, Property::kProfile, "64-bit", 693},
    {kFormatRar, Property::kVersion, "5", 613},
    {kFormatOpenDocumentText, Property::kVersion, "1.0", 136},
    {kFormatOpenDocumentText, Property::kVersion, "1.1", 290},
    {kFormatOpenDocumentSpreadsheet, Property::kVersion, "1.0", 137},
    {kFormatOpenDocumentSpreadsheet, Property::kVersion, "1.1", 294},
    {kFormatOpenDocumentDrawing, Property::kVersion, "1.0", 139},
    {kFormatOpenDocumentDrawing, Property::kVersion, "1.1", 296},
};

// Whether a property says `wanted`, alone or as one of several.
bool Says(std::string_view text, std::string_view wanted) {
  constexpr std::string_view kDivider = ", ";
  while (true) {
    const size_t end = text.find(kDivider);
    if (text.substr(0, end) == wanted) return true;
    if (end == std::string_view::npos) return false;
    text.remove_prefix(end + kDivider.size());
  }
}

// JFIF and Exif share version numbers, so that the kind and the version decide together.
uint16_t OfJpeg(const PropertySet& properties) {
  constexpr struct {
    std::string_view profile;
    std::string_view version;
    uint16_t puid;
  } kKinds[] = {
      {"JFIF", "1.00", 42},    {"JFIF", "1.01", 43},    {"JFIF", "1.02", 44},
      {"SPIFF", "1.0", 112},   {"Exif", "2.0", X(398)}, {"Exif", "2.1", X(390)},
      {"Exif", "2.2", X(391)}, {"Exif", "2.21", 645},   {"Exif", "2.3", 1507},
  };
  if (!properties.Has(Property::kProfile)) return 41;
  for (const auto& kind : kKinds) {
    if (properties.Is(Property::kProfile, kind.profile) &&
        properties.Is(Property::kVersion, kind.version)) {
      return kind.puid;
    }
  }
  return 0;
}

// Broadcast Wave is divided by version and coding together, and stays open.
uint16_t OfWave(const PropertySet& properties) {
  if (properties.Has(Property::kProfile)) return 0;
  if (properties.Is(Property::kKind, "PCM")) return 141;
  return properties.Is(Property::kKind, "extensible") ? 143 : 0;
}

}  // namespace

uint16_t PuidByProperties(FormatId id, const PropertySet& properties) {
  if (id == kFormatJpeg) return OfJpeg(properties);
  if (id == kFormatWave) return OfWave(properties);
  for (const Row& row : kRows) {
    if (row.id == id && properties.Has(row.property) &&
        Says(properties[row.property].text(), row.value)) {
      return row.puid;
    }
  }
  return 0;
}

}  // namespace fi
