#include "api/corrections.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "api/supplement.h"
#include "probes/image/bare_images.h"
#include "probes/mail/mime_entity.h"
#include "probes/media/iso_brands.h"
#include "probes/opendocument/media_types.h"
#include "probes/print/hpgl.h"
#include "probes/storage/workbook.h"
#include "probes/text/plain_text.h"
#include "probes/text/tableless.h"
#include "registry/format_ids.h"
#include "stream/file_bytes.h"
#include "stream/text_head.h"
#include "tables/signature_table.h"
#include "tables/supplement_table.h"
#include "tables/text_probes.h"

namespace fi {
namespace {

// A look at the content: the identifier that it proves, or kNoMatch.
using Look = FormatId (*)(SignatureRun& run, const FixedAnswer& answer);

bool HasName(const SignatureRun& run) { return run.extension[0] != '\0'; }

bool IsSpecific(FormatId id) { return !IsGeneralAnswer(id); }

// The name alone made it TGA. Where the header is none, the file is what it is without its name.
FormatId LookAtTarga(SignatureRun& run, const FixedAnswer& answer) {
  if (!HasName(run) || MayBeTarga(run.stream)) return kNoMatch;
  return answer.withoutName(run, answer.behaviour);
}

// The name and two zeros made it WBMP. One of another size stays WBMP where nothing claims it.
FormatId LookAtWirelessBitmap(SignatureRun& run, const FixedAnswer& answer) {
  if (!HasName(run) || MayBeWirelessBitmap(run.stream)) return kNoMatch;
  const FormatId id = answer.withoutName(run, answer.behaviour);
  return IsSpecific(id) ? id : kNoMatch;
}

// The name alone made it HP-GL. A plot is text of commands.
FormatId LookAtPlotByName(SignatureRun& run, const FixedAnswer& answer) {
  if (!HasName(run)) return kNoMatch;
  const FormatId id = answer.withoutName(run, answer.behaviour);
  return IsSpecific(id) || !BeginsPlot(run.stream) ? id : kNoMatch;
}

// Three letters near the end made it MPEG audio: a tag that stands behind other audio as well.
FormatId LookAtTaggedAudio(SignatureRun& run, const FixedAnswer& answer) {
  FormatId id = WalkSignaturesBehind(run, answer.row).id;
  if (id == kNoMatch) id = WalkSupplement(run).id;
  return id == kFormatMpegAudio || id == kFormatMpegAudioId3v2 ? kNoMatch : id;
}

// The class of the older version stands on workbooks of the newer one.
FormatId LookAtWorkbook(SignatureRun& run, const FixedAnswer& /*answer*/) {
  if (!run.isStorage || !IsBiff8Workbook(run.stream->handle)) return kNoMatch;
  return ProbeWorkbook(run.stream);
}

// The namespace of the manifest made it OpenDocument; the media type at the head of the package
// says OpenOffice.org 1.x. The generator stays what it was.
FormatId LookAtOpenDocument(SignatureRun& run, const FixedAnswer& answer) {
  const bool isStarOffice =
      answer.id == kFormatStarOffice8Text || answer.id == kFormatStarOffice8Spreadsheet ||
      answer.id == kFormatStarOffice8Presentation || answer.id == kFormatStarOffice8Drawing;
  switch (const FormatId id = FormatOfMimetypeAtHead(run.stream->handle); id) {
    case kFormatOpenOffice1Text:
      return isStarOffice ? kFormatStarOfficeText : id;
    case kFormatOpenOffice1Spreadsheet:
      return isStarOffice ? kFormatStarOfficeSpreadsheet : id;
    case kFormatOpenOffice1Presentation:
      return isStarOffice ? kFormatStarOfficePresentation : id;
    case kFormatOpenOffice1Drawing:
      return isStarOffice ? kFormatStarOfficeDrawing : id;
    default:
      return kNoMatch;
  }
}

// Behind the mark they share, a class file has its version, 45 and up, a universal binary the
// number of its parts, of which the first is for a known processor.
FormatId LookAtJavaClass(SignatureRun& run, const FixedAnswer& /*answer*/) {
  constexpr uint32_t kFirstVersion = 45;
  constexpr uint32_t kWide = 0x01000000;  // 64 bits
  constexpr uint32_t kProcessors[] = {6, 7, 8, 10, 11, 12, 13, 14, 15, 16, 18};
  const FileBytes<12> head(run.stream, 0);
  const uint32_t parts = head.DwordBE(4);
  const uint32_t processor = head.DwordBE(8) & ~kWide;
  const bool isKnown =
      std::find(std::begin(kProcessors), std::end(kProcessors), processor) != std::end(kProcessors);
  return parts > 0 && parts < kFirstVersion && isKnown ? kFormatMachOUniversal : kNoMatch;
}

// Two bytes of an opcode made it a picture, or zeros a document; a mark says otherwise.
FormatId LookAtWeakMark(SignatureRun& run, const FixedAnswer& /*answer*/) {
  const FileBytes<136> head(run.stream, 0);
  if (head.Holds(128, "DICM") && head.WordLE(132) == 2) return kFormatDicom;
  return head.Holds(0, "BPG\xFB") ? kFormatBpg : kNoMatch;
}

// The first compatible brand that the fixed rules know decided, where the major brand says more.
FormatId LookAtBrand(SignatureRun& run, const FixedAnswer& /*answer*/) {
  return DecidingMajorBrand(run.stream);
}

// MIME fields without those of a message made it a saved web page.
FormatId LookAtSavedPage(SignatureRun& run, const FixedAnswer& /*answer*/) {
  const TextHead head(run.stream);
  return IsNoSavedPage(head.View(), head.isCut()) ? kFormatMimeEntity : kNoMatch;
}

// Equal numbers of commas or tabs made it a table.
FormatId LookAtTable(SignatureRun& run, const FixedAnswer& /*answer*/) {
  if (const FormatId id = TextFormatProbe(run.stream, ""); id != kNoMatch) {
    return id == kFormatYaml ? kNoMatch : id;
  }
  if (IsPlotBehindEndOfText(run.stream)) return kFormatHpGl;
  return IsNoTable(TextHead(run.stream).View()) ? ClassifyPlainText(run.stream) : kNoMatch;
}

struct Row {
  FormatId id;
  Look look;
};

// One row for each fixed answer that was met where it is false, in rising order. A sample of each
// is in tests/data/corrections.txt, the table with proofs and reasons in docs/supplement.md.
constexpr Row kRows[] = {
    {kFormatWorksDocumentForMac, LookAtWeakMark},
    {kFormatMimeHtmlArchive, LookAtSavedPage},
    {kFormatStarOffice8Text, LookAtOpenDocument},
    {kFormatOpenDocumentText, LookAtOpenDocument},
    {kFormatExcel5Or95, LookAtWorkbook},
    {kFormatStarOffice8Spreadsheet, LookAtOpenDocument},
    {kFormatOpenDocumentSpreadsheet, LookAtOpenDocument},
    {kFormatPict2, LookAtWeakMark},
    {kFormatPict1, LookAtWeakMark},
    {kFormatTga, LookAtTarga},
    {kFormatHpGlByExtension, LookAtPlotByName},
    {kFormatWbmp, LookAtWirelessBitmap},
    {kFormatStarOffice8Drawing, LookAtOpenDocument},
    {kFormatStarOffice8Presentation, LookAtOpenDocument},
    {kFormatMpegAudioId3v1, LookAtTaggedAudio},
    {kFormatMp4, LookAtBrand},
    {kFormatHeif, LookAtBrand},
    {kFormatJavaClass, LookAtJavaClass},
    {kFormatOpenDocumentPresentation, LookAtOpenDocument},
    {kFormatOpenDocumentDrawing, LookAtOpenDocument},
    {kFormatCommaSeparatedValues, LookAtTable},
    {kFormatTabSeparatedValues, LookAtTable},
    {kFormatSemicolonSeparatedValues, LookAtTable},
    {kFormatVerticalBarSeparatedValues, LookAtTable},
    {kFormatPictBare, LookAtWeakMark},
};
static_assert(std::ranges::is_sorted(kRows, {}, &Row::id));

// For each identifier from the first on the place of its row, counted from 1; 0: it has none.
constexpr FormatId kFirst = kRows[0].id;
constexpr auto kPlaces = [] {
  std::array<uint8_t, std::prev(std::end(kRows))->id - kFirst + 1> places{};
  static_assert(std::size(kRows) <= 0xFF);
  uint8_t place = 0;
  for (const Row& row : kRows) places[row.id - kFirst] = ++place;
  return places;
}();

}  // namespace

FormatId CorrectionOf(SignatureRun& run, const FixedAnswer& answer) {
  const size_t at = static_cast<size_t>(answer.id) - kFirst;  // huge below the first
  if (at >= kPlaces.size() || kPlaces[at] == 0) return kNoMatch;
  const FormatId id = kRows[kPlaces[at] - 1].look(run, answer);
  return id == answer.id ? kNoMatch : id;
}

}  // namespace fi
