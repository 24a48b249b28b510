#include "properties/families.h"

#include <algorithm>
#include <iterator>

#include "properties/archive/arj.h"
#include "properties/archive/rar.h"
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
#include "properties/media/wave.h"
#include "properties/pdf/pdf.h"
#include "properties/program/elf.h"
#include "properties/program/java_class.h"
#include "properties/program/mach_o.h"
#include "properties/program/pe.h"
#include "properties/text/markup.h"
#include "properties/text/rich_text.h"
#include "properties/text/text.h"
#include "registry/format_ids.h"

namespace fi {
namespace {

using Family = void (*)(const PropertyQuestion& question, PropertySet& out);

struct FamilyRow {
  FormatId id;
  Family read;
};

// Sorted by identifier. A format without a family is read as text, where its bytes are.
constexpr FamilyRow kFamilies[] = {
    {kFormatRichText, ReadRichTextProperties},
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
    {kFormatAutoCad2018, ReadDwgProperties},
};
static_assert(std::ranges::is_sorted(kFamilies, {}, &FamilyRow::id));

}  // namespace

void ReadProperties(const PropertyQuestion& question, PropertySet& out) {
  const FamilyRow* row = std::ranges::lower_bound(kFamilies, question.id, {}, &FamilyRow::id);
  if (row != std::end(kFamilies) && row->id == question.id) return row->read(question, out);
  ReadTextProperties(question, out);
}

}  // namespace fi
