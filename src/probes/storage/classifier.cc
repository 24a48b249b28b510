#include "probes/storage/classifier.h"

#include "probes/protection/encrypted_package.h"
#include "probes/storage/message_class.h"
#include "probes/storage/visio.h"
#include "probes/storage/word_fib.h"
#include "probes/storage/workbook.h"
#include "registry/format_ids.h"
#include "stream/child_stream.h"

namespace fi {
namespace {

// The refinements read the stream of their row from its start and answer the format, kNoMatch when
// the name was all that spoke for it.

// WordPerfect, Presentations and Quattro Pro share a stream. It begins as a WordPerfect file does
// (FF "WPC", whose byte 9 tells the product) or as a notebook.
FormatId RefinePerfectOffice(IdentificationStream* child) {
  constexpr uint32_t kWordPerfectMark = 0xFF575043;
  constexpr uint32_t kNotebookMark = 0x00000200;
  constexpr int32_t kNotebookVersion = 0x1007;
  constexpr uint32_t kDocument = 10;
  constexpr uint32_t kGraphic = 22;

  uint32_t mark = 0;
  if (IdStreamGetDwordBE(child, &mark) != 0) return kNoMatch;
  const int32_t version = IdStreamGetWordLE(child);
  if (version < 0) return kNoMatch;
  if (mark == kNotebookMark) {
    return version == kNotebookVersion ? kFormatQuattroPro7To8 : kNoMatch;
  }
  if (mark != kWordPerfectMark) return kNoMatch;
  (void)IdStreamSeek(child, 3, kIoFromCurrent);
  const uint32_t product = IdStreamGetByte(child);
  if (product == kDocument) return kFormatWordPerfect7;
  if (product == kGraphic) return kFormatWpgCompoundFile;
  return kFormatCorelPresentations7To9;
}

// PowerPoint 95 begins with a record of type 3, where later versions have other types.
FormatId RefinePowerPoint(IdentificationStream* child) {
  constexpr int32_t kPowerPoint95Record = 3;
  const int32_t type = IdStreamGetWordLE(child);
  if (type < 0) return kNoMatch;
  return type == kPowerPoint95Record ? kFormatPowerPoint95 : kFormatPowerPoint97;
}

// The file-information block: identifier, then version, 16 bits each.
// Deliberate: the low byte of the version decides, and a version of 0x6901 or more counts as late
// whatever its low byte.
FormatId RefineWord(IdentificationStream* child) {
  constexpr uint32_t kLastWord95 = 0x69;
  uint32_t block = 0;
  if (IdStreamGetDwordLE(child, &block) != 0) return kNoMatch;
  const bool late = block > kLastWord95 << 24 || (block >> 16 & 0xFF) > kLastWord95;
  return late ? kFormatWord2000 : kFormatWord6Or95;
}

// "HWP Document File": other programs name a stream "FileHeader", too.
FormatId RefineHangul(IdentificationStream* child) {
  constexpr uint32_t kHwp = 0x48575020;   // "HWP "
  constexpr uint32_t kDocu = 0x446F6375;  // "Docu"
  uint32_t first = 0;
  uint32_t second = 0;
  if (IdStreamGetDwordBE(child, &first) != 0) return kNoMatch;
  if (IdStreamGetDwordBE(child, &second) != 0) return kNoMatch;
  return first == kHwp && second == kDocu ? kFormatHangul5 : kNoMatch;
}

// Deliberate: eight bytes of any value are a notebook here, where the probe of the same stream asks
// for the marks 0x000E0001 and "QPW9".
FormatId RefineNativeContent(IdentificationStream* child) {
  uint32_t word = 0;
  if (IdStreamGetDwordLE(child, &word) != 0) return kNoMatch;
  if (IdStreamGetDwordLE(child, &word) != 0) return kNoMatch;
  return kFormatQuattroPro9;
}

struct StreamRow {
  const char* name;
  uint32_t type;
  FormatId id;
  FormatId (*refine)(IdentificationStream* child);  // null: the name is enough
};

// In order of priority, since documents hold several of these. An encrypted package wins over the
// document stream with the notice for old readers, a presentation over the Word document saved with
// it, and the old name of the workbook over the new name. Both spellings of a name are listed for
// hosts that compare names by case.
constexpr StreamRow kStreams[] = {
    {"PP40", kIoSourceStorageStream, kFormatPowerPoint4Stream, nullptr},
    {"EncryptedPackage", kIoSourceStorageStream, kFormatEncryptedOfficeXml, nullptr},
    {"PP97_DUALSTORAGE", kIoSourceSubStorage, kFormatPowerPoint95And97, nullptr},
    {"PowerPoint Document", kIoSourceStorageStream, kFormatPowerPoint95, RefinePowerPoint},
    {"WordDocument", kIoSourceStorageStream, kFormatWord6Or95, RefineWord},
    {"NOVELL_MAIN", kIoSourceStorageStream, kFormatQuattroPro7, nullptr},
    {"PerfectOffice_MAIN", kIoSourceStorageStream, kFormatCorelPresentations7To9,
     RefinePerfectOffice},
    {"Book", kIoSourceStorageStream, kFormatExcel5Or95, nullptr},
    {"BOOK", kIoSourceStorageStream, kFormatExcel5Or95, nullptr},
    {"WksSSChart", kIoSourceStorageStream, kFormatWorksSpreadsheet6To9, nullptr},
    {"WksSSWorkBook", kIoSourceStorageStream, kFormatWorksSpreadsheet6To9, nullptr},
    {"Workbook", kIoSourceStorageStream, kFormatExcel2000, nullptr},
    {"WORKBOOK", kIoSourceStorageStream, kFormatExcel2000, nullptr},
    {"NativeContent_MAIN", kIoSourceStorageStream, kFormatQuattroPro9, RefineNativeContent},
    {"FileHeader", kIoSourceStorageStream, kFormatHangul5, RefineHangul},
    {"VisioDocument", kIoSourceStorageStream, kFormatVisio2003, nullptr},
    {"MN0", kIoSourceStorageStream, kFormatWorksDocument4, nullptr},
    {"__properties_version1.0", kIoSourceStorageStream, kFormatOutlookMessage, nullptr},
};

// The format that the first row with a child in the document leads to.
FormatId ClassifyByStreams(IOHandle* document) {
  for (const StreamRow& row : kStreams) {
    const io::OwnedHandle child = OpenChild(document, row.type, row.name);
    if (child == nullptr) continue;
    if (row.refine == nullptr) return row.id;
    const ScopedStream bytes(child.get());
    return bytes ? row.refine(bytes.get()) : kNoMatch;
  }
  return kNoMatch;
}

// Formats whose versions a probe of their own tells apart.
FormatId RefineByProbe(IdentificationStream* stream, FormatId id) {
  switch (id) {
    case kFormatVisio2003:
      return ProbeVisioDocument(stream);
    case kFormatOutlookMessage:
      return MapMessageClass(stream, id);
    case kFormatWord2000:
      return ProbeWordFib(stream);
    case kFormatExcel2000:
      return ProbeWorkbook(stream);
    default:
      return id;
  }
}

}  // namespace

uint32_t ClassifyCompoundDocument(IdentificationStream* stream, const char* extension,
                                  FormatId* outId) {
  *outId = kNoMatch;
  if (!IsStorage(stream->handle)) return 0;
  const FormatId id = ClassifyByStreams(stream->handle);
  if (id == kFormatEncryptedOfficeXml) return ClassifyEncryptedPackage(stream, extension, outId);
  *outId = RefineByProbe(stream, id);
  return 0;
}

}  // namespace fi
