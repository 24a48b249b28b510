#include "properties/families.h"

#include <algorithm>
#include <iterator>

#include "properties/archive/arj.h"
#include "properties/archive/rar.h"
#include "properties/archive/seven_zip.h"
#include "properties/archive/zip.h"
#include "properties/database/sqlite.h"
#include "properties/drawing/dwg.h"
#include "properties/drawing/dxf.h"
#include "properties/image/bitmap.h"
#include "properties/image/gif.h"
#include "properties/image/heif.h"
#include "properties/image/jpeg.h"
#include "properties/image/jpeg2000.h"
#include "properties/image/png.h"
#include "properties/image/tiff.h"
#include "properties/image/webp.h"
#include "properties/keys/cms.h"
#include "properties/keys/der_objects.h"
#include "properties/keys/openpgp.h"
#include "properties/keys/pem.h"
#include "properties/mail/internet_message.h"
#include "properties/mail/outlook_message.h"
#include "properties/media/wave.h"
#include "properties/office/binary_office.h"
#include "properties/office/encrypted_package.h"
#include "properties/package/package.h"
#include "properties/pdf/pdf.h"
#include "properties/program/elf.h"
#include "properties/program/java_class.h"
#include "properties/program/mach_o.h"
#include "properties/program/pe.h"
#include "properties/program/python_byte_code.h"
#include "properties/text/markup.h"
#include "properties/text/rich_text.h"
#include "properties/text/text.h"
#include "registry/format_ids.h"
#include "stream/child_stream.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

using Family = void (*)(const PropertyQuestion& question, PropertySet& out);

struct FamilyRow {
  FormatId id;
  Family read;
};

// Sorted by identifier. Documents in compound files and packages are many identifiers of few
// families: they are told by their container. What is neither is read as text, where its bytes are.
constexpr FamilyRow kFamilies[] = {
    {kFormatRichText, ReadRichTextProperties},
    {kFormatRfc822Message, ReadInternetMessageProperties},
    {kFormatWeakMailMessage, ReadInternetMessageProperties},
    {kFormatMimeMailMessage, ReadInternetMessageProperties},
    {kFormatEmlMessage, ReadInternetMessageProperties},
    {kFormatAppleMailMessage, ReadInternetMessageProperties},
    {kFormatSMimeMessage, ReadInternetMessageProperties},
    {kFormatSMimeSignedMessage, ReadInternetMessageProperties},
    {kFormatBmp, ReadBitmapProperties},
    {kFormatTiff, ReadTiffProperties},
    {kFormatGif, ReadGifProperties},
    {kFormatOs2Bitmap1, ReadBitmapProperties},
    {kFormatJpeg, ReadJpegProperties},
    {kFormatDxfText, ReadDxfProperties},
    {kFormatDxfBinary, ReadDxfProperties},
    {kFormatAutoCadR11, ReadDwgProperties},
    {kFormatAutoCadR13, ReadDwgProperties},
    {kFormatPdf, ReadPdfProperties},
    {kFormatPng, ReadPngProperties},
    {kFormatAutoCadOther, ReadDwgProperties},
    {kFormatAutoCadR14, ReadDwgProperties},
    {kFormatBmpV5, ReadBitmapProperties},
    {kFormatIllustratorPdf, ReadPdfProperties},
    {kFormatAutoCad2000, ReadDwgProperties},
    {kFormatAutoCad25, ReadDwgProperties},
    {kFormatAutoCad26, ReadDwgProperties},
    {kFormatAutoCadR9, ReadDwgProperties},
    {kFormatAutoCadR10, ReadDwgProperties},
    {kFormatAutoCad2004, ReadDwgProperties},
    {kFormatAutoCad2007, ReadDwgProperties},
    {kFormatOs2Bitmap2, ReadBitmapProperties},
    {kFormatJpeg2000, ReadJpeg2000Properties},
    {kFormatJpeg2000Jpxb, ReadJpeg2000Properties},
    {kFormatMotionJpeg2000, ReadJpeg2000Properties},
    {kFormatHeif, ReadHeifProperties},
    {kFormatZip, ReadZipProperties},
    {kFormatExecutable, ReadPeProperties},
    {kFormatJavaClass, ReadJavaClassProperties},
    {kFormatRar, ReadRarProperties},
    {kFormatSevenZip, ReadSevenZipProperties},
    {kFormatAutoCad2010, ReadDwgProperties},
    {kFormatAutoCad2013, ReadDwgProperties},
    {kFormatElf, ReadElfProperties},
    {kFormatMachO, ReadMachOProperties},
    {kFormatArj, ReadArjProperties},
    {kFormatWebP, ReadWebPProperties},
    {kFormatBigTiff, ReadTiffProperties},
    {kFormatSvg, ReadMarkupProperties},
    {kFormatWave, ReadWaveProperties},
    {kFormatSqlite, ReadSqliteProperties},
    {kFormatXml, ReadMarkupProperties},
    {kFormatHtml, ReadMarkupProperties},
    {kFormatPem, ReadPemProperties},
    {kFormatPgpArmoured, ReadOpenPgpProperties},
    {kFormatOpenPgpBinary, ReadOpenPgpProperties},
    {kFormatCmsDer, ReadCmsProperties},
    {kFormatCertificateDer, ReadCertificateProperties},
    {kFormatPkcs12, ReadPkcs12Properties},
    {kFormatAutoCad2018, ReadDwgProperties},
};
static_assert(std::ranges::is_sorted(kFamilies, {}, &FamilyRow::id));

// Documents in compound files: an encrypted package, an item of Outlook, else perhaps of Office.
void ReadStorageProperties(const PropertyQuestion& question, PropertySet& out) {
  IOHandle* document = question.stream->handle;
  if (HasStream(document, "EncryptedPackage")) return ReadEncryptedPackageProperties(question, out);
  if (HasStream(document, "__properties_version1.0")) {
    return ReadOutlookMessageProperties(question, out);
  }
  ReadBinaryOfficeProperties(question, out);
}

bool IsPackage(IdentificationStream* stream) {
  const FileBytes<4> head(stream, 0);
  return head.Holds(0, "PK\x03\x04") || head.Holds(0, "PK\x05\x06");
}

}  // namespace

void ReadProperties(const PropertyQuestion& question, PropertySet& out) {
  const FamilyRow* row = std::ranges::lower_bound(kFamilies, question.id, {}, &FamilyRow::id);
  if (row != std::end(kFamilies) && row->id == question.id) return row->read(question, out);
  if (IsStorage(question.stream->handle)) return ReadStorageProperties(question, out);
  if (IsPackage(question.stream)) return ReadPackageProperties(question, out);
  ReadTextProperties(question, out);
}

}  // namespace fi
