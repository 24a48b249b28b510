#include "probes/protection/encryption.h"

#include "registry/format_ids.h"
#include "stream/child_stream.h"

namespace fi {
namespace {

struct EncryptedRow {
  FormatId first;  // of a range of identifiers
  FormatId last;
  FormatId encrypted;
};

constexpr EncryptedRow kEncrypted[] = {
    // Word.
    {kFormatWordXmlDocument2007, kFormatWordXmlDocument2007, kFormatEncryptedWordXmlDocument2007},
    {kFormatWordXmlTemplate2007, kFormatWordXmlTemplate2007, kFormatEncryptedWordXmlDocument2007},
    {kFormatWordXmlMacroDocument2007, kFormatWordXmlMacroTemplate2007,
     kFormatEncryptedWordXmlDocument2007},
    {kFormatWordXmlDocument2010, kFormatWordXmlMacroTemplate2010,
     kFormatEncryptedWordXmlDocument2010},
    {kFormatWordXmlDocument2013, kFormatWordXmlMacroTemplate2013,
     kFormatEncryptedWordXmlDocument2010},
    {kFormatWordXmlDocument2016, kFormatWordXmlMacroTemplate2016,
     kFormatEncryptedWordXmlDocument2010},
    // Excel.
    {kFormatExcelXmlWorkbook2007, kFormatExcelXmlWorkbook2007,
     kFormatEncryptedExcelXmlWorkbook2007},
    {kFormatRightsManagedExcelXmlWorkbook, kFormatRightsManagedExcelXmlWorkbook,
     kFormatEncryptedExcelXmlWorkbook2007},
    {kFormatExcelXmlTemplate2007, kFormatExcelXmlMacroTemplate2007,
     kFormatEncryptedExcelXmlWorkbook2007},
    {kFormatExcelXmlMacroAddIn2007, kFormatExcelXmlMacroAddIn2007,
     kFormatEncryptedExcelXmlWorkbook2007},
    {kFormatExcelBinaryWorkbook2007, kFormatExcelBinaryWorkbook2007,
     kFormatEncryptedExcelBinaryWorkbook2007},
    {kFormatExcelXmlWorkbook2010, kFormatExcelXmlMacroAddIn2010,
     kFormatEncryptedExcelXmlWorkbook2010},
    {kFormatExcelXmlWorkbook2013, kFormatExcelXmlMacroAddIn2013,
     kFormatEncryptedExcelXmlWorkbook2010},
    {kFormatExcelXmlWorkbook2016, kFormatExcelXmlMacroAddIn2016,
     kFormatEncryptedExcelXmlWorkbook2010},
    {kFormatExcelBinaryWorkbook2010, kFormatExcelBinaryWorkbook2010,
     kFormatEncryptedExcelBinaryWorkbook2010},
    {1493, 1493, kFormatEncryptedExcelBinaryWorkbook2010},
    {kFormatExcelBinaryWorkbook2016, kFormatExcelBinaryWorkbook2016,
     kFormatEncryptedExcelBinaryWorkbook2010},
    {kFormatMobileReportWorkbook, kFormatMobileReportWorkbook,
     kFormatEncryptedMobileReportWorkbook},
    // PowerPoint.
    {kFormatPowerPointXmlPresentation2007, kFormatPowerPointXmlPresentation2007,
     kFormatEncryptedPowerPointXmlPresentation2007},
    {kFormatPowerPointXmlTemplate2007, kFormatPowerPointXmlMacroSlideShow2007,
     kFormatEncryptedPowerPointXmlPresentation2007},
    {kFormatPowerPointXmlPresentation2010, kFormatPowerPointXmlMacroSlideShow2010,
     kFormatEncryptedPowerPointXmlPresentation2010},
    {kFormatPowerPointXmlPresentation2013, kFormatPowerPointXmlMacroSlideShow2013,
     kFormatEncryptedPowerPointXmlPresentation2010},
    {kFormatPowerPointXmlPresentation2016, kFormatPowerPointXmlMacroSlideShow2016,
     kFormatEncryptedPowerPointXmlPresentation2010},
};

}  // namespace

int32_t ReadEncryptionInfoVersion(IdentificationStream* stream) {
  const ChildStream info(stream->handle, "EncryptionInfo");
  if (!info) return -1;
  const int32_t major = IdStreamGetWordLE(info.get());
  const int32_t minor = IdStreamGetWordLE(info.get());
  uint32_t flags = 0;
  if (IdStreamGetDwordLE(info.get(), &flags) != 0 || major < 0) return -1;
  return minor == kStandardEncryption || minor == kAgileEncryption ? minor : -1;
}

uint32_t DecryptAndReidentify(const IdentificationStream* document, FormatId* outId,
                              O12InitFunction decrypt) {
  const IdentificationJob& job = *document->job;
  const O12Options options{sizeof(O12Options), {}};
  const O12PasswordSource source{sizeof(O12PasswordSource), job.askPassword, document->handle,
                                 job.passwordContext};
  IOHandle* handles[3] = {};
  const int16_t status = decrypt(document->handle, nullptr, nullptr, &options, &source, &handles[0],
                                 &handles[1], &handles[2]);
  // In this order: the package must be closed before the handle that it reads through.
  const io::OwnedHandle first(handles[0]);
  const io::OwnedHandle second(handles[1]);
  const io::OwnedHandle package(handles[2]);
  const auto result = static_cast<uint32_t>(int32_t{status});
  if (result != 0) return result;
  const Answer decrypted = job.identify(job, package.get());
  *outId = decrypted.status == kFiOk ? MapDecryptedId(decrypted.id) : decrypted.id;
  return result;
}

FormatId MapDecryptedId(FormatId id) {
  for (const EncryptedRow& row : kEncrypted) {
    if (id >= row.first && id <= row.last) return row.encrypted;
  }
  return kFormatEncryptedOfficeXml;
}

}  // namespace fi
