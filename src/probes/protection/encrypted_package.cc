#include "probes/protection/encrypted_package.h"

#include <string_view>

#include "probes/protection/rights_management.h"
#include "registry/format_ids.h"
#include "stream/child_stream.h"

namespace fi {
namespace {

struct ExtensionRow {
  std::string_view extension;
  FormatId id;
};

constexpr ExtensionRow kExtensions[] = {
    {"PPTX", kFormatEncryptedPowerPointXmlPresentation2007},
    {"PPTM", kFormatEncryptedPowerPointXmlPresentation2007},
    {"POTX", kFormatEncryptedPowerPointXmlPresentation2007},
    {"POTM", kFormatEncryptedPowerPointXmlPresentation2007},
    {"PPSM", kFormatEncryptedPowerPointXmlPresentation2007},
    {"PPSX", kFormatEncryptedPowerPointXmlPresentation2007},
    {"XLSX", kFormatEncryptedExcelXmlWorkbook2007},
    {"XLTX", kFormatEncryptedExcelXmlWorkbook2007},
    {"XLSM", kFormatEncryptedExcelXmlWorkbook2007},
    {"XLAM", kFormatEncryptedExcelXmlWorkbook2007},
    {"XLTM", kFormatEncryptedExcelXmlWorkbook2007},
    {"DOCX", kFormatEncryptedWordXmlDocument2007},
    {"DOTX", kFormatEncryptedWordXmlDocument2007},
    {"DOCM", kFormatEncryptedWordXmlDocument2007},
    {"DOTM", kFormatEncryptedWordXmlDocument2007},
    {"XLSB", kFormatEncryptedExcelBinaryWorkbook2007},
};

FormatId ByExtension(std::string_view extension) {
  for (const ExtensionRow& row : kExtensions) {
    if (extension == row.extension) return row.id;
  }
  return kFormatEncryptedOfficeXml;
}

// The same application's package in the agile scheme, which Office 2010 brought.
FormatId AgileFormat(FormatId id) {
  switch (id) {
    case kFormatEncryptedWordXmlDocument2007:
      return kFormatEncryptedWordXmlDocument2010;
    case kFormatEncryptedExcelXmlWorkbook2007:
      return kFormatEncryptedExcelXmlWorkbook2010;
    case kFormatEncryptedExcelBinaryWorkbook2007:
      return kFormatEncryptedExcelBinaryWorkbook2010;
    case kFormatEncryptedPowerPointXmlPresentation2007:
      return kFormatEncryptedPowerPointXmlPresentation2010;
    default:
      return id;
  }
}

// Deliberate: binary workbooks have no rights-managed counterpart and keep their identifier.
FormatId RightsManagedFormat(FormatId id) {
  switch (id) {
    case kFormatEncryptedWordXmlDocument2007:
      return kFormatRightsManagedWordXmlDocument;
    case kFormatEncryptedExcelXmlWorkbook2007:
      return kFormatRightsManagedExcelXmlWorkbook;
    case kFormatEncryptedPowerPointXmlPresentation2007:
      return kFormatRightsManagedPowerPointXmlPresentation;
    default:
      return id;
  }
}

// A workbook in the standard scheme may be of any version, so the content is examined. Without the
// right password the extension decides.
uint32_t ClassifyStandardWorkbook(const IdentificationStream* document, FormatId* outId,
                                  O12InitFunction decrypt) {
  const uint32_t status = DecryptAndReidentify(document, outId, decrypt);
  return status == kFiWrongPassword || status == kFiPasswordNeeded ? 0 : status;
}

}  // namespace

uint32_t ClassifyEncryptedPackage(IdentificationStream* stream, const char* extension,
                                  FormatId* outId, O12InitFunction decrypt) {
  const FormatId id = HasStream(stream->handle, "WordDocument")
                          ? kFormatEncryptedWordXmlDocument2007
                          : ByExtension(extension);
  const int32_t version = ReadEncryptionInfoVersion(stream);
  *outId = id;
  if (version != kAgileEncryption && version != kStandardEncryption) {
    if (CheckRightsManagedTransform(stream)) *outId = RightsManagedFormat(id);
    return 0;
  }
  if (id == kFormatEncryptedOfficeXml) return DecryptAndReidentify(stream, outId, decrypt);
  if (version == kAgileEncryption) {
    *outId = AgileFormat(id);
    return 0;
  }
  if (id == kFormatEncryptedExcelXmlWorkbook2007) {
    return ClassifyStandardWorkbook(stream, outId, decrypt);
  }
  return 0;
}

}  // namespace fi
