#include "engine/probe_table.h"

#include <algorithm>
#include <iterator>

#include "platform/format_ids.h"
#include "probes/content/card_calendar.h"
#include "probes/content/dif.h"
#include "probes/content/encoded_text.h"
#include "probes/content/eps_preview.h"
#include "probes/content/escape_sequence.h"
#include "probes/content/header_checksum.h"
#include "probes/content/high_byte_density.h"
#include "probes/content/mail.h"
#include "probes/content/marker_sequence.h"
#include "probes/content/pict.h"
#include "probes/content/ptf_header.h"
#include "probes/content/record_triplet.h"
#include "probes/content/sfnt.h"
#include "probes/content/text_version.h"
#include "probes/content/version_digit.h"
#include "probes/content/versioned_6100.h"
#include "probes/content/x_bitmap.h"
#include "probes/media/iso_media.h"
#include "probes/media/ogg.h"
#include "probes/package/dispatcher.h"
#include "probes/storage/classifier.h"
#include "probes/storage/designer.h"
#include "probes/storage/legacy_document.h"
#include "probes/storage/message_class.h"
#include "probes/storage/project.h"
#include "probes/storage/publisher.h"
#include "probes/storage/quattro_pro.h"
#include "probes/storage/visio.h"
#include "probes/storage/word_fib.h"
#include "probes/storage/workbook.h"

namespace fi {
namespace {

// Adapters from the call of the table to the shapes that probes have.

template <FormatId (*probe)(IdentificationStream*)>
FormatId OfStream(const ProbeCall& call) {
  return probe(call.run.stream);
}

// Codes whose probe is not part of the library, and those whose format is not publicly known. They
// keep their rows: a code without one changes how a program goes on behind it.
FormatId NoProbe(const ProbeCall& /*call*/) { return kNoMatch; }

// The five bytes that lead here are proof enough; this code never answers no match.
FormatId RichText(const ProbeCall& /*call*/) { return kFormatRichText; }

// The code is the format that the storage's class stands for.
FormatId PerfectOfficeMain(const ProbeCall& call) {
  return ProbePerfectOfficeMain(call.run.stream, call.code);
}

FormatId MessageClass(const ProbeCall& call) { return MapMessageClass(call.run.stream, call.code); }

FormatId Mail(const ProbeCall& call) {
  return MailProbe(call.run.stream, call.run.extension.data());
}

FormatId Classifier(const ProbeCall& call) {
  call.run.classifierRan = 1;
  FormatId id = kFormatUnknown;
  call.run.status = ClassifyCompoundDocument(call.run.stream, call.run.extension.data(), &id);
  return id;
}

FormatId Package(const ProbeCall& call) {
  int32_t extra = 0;
  const FormatId id = PackageProbe(call.run.stream, &extra);
  call.run.status = static_cast<uint32_t>(extra);
  return id;
}

// Both kinds of font have a directory of the same form, at the start of the file.
FormatId Font(const ProbeCall& call) {
  return SfntDirectoryProbe(call.run.stream, 0) ? call.code : kNoMatch;
}

template <uint32_t offset>
FormatId MarkerSequence(const ProbeCall& call) {
  return MarkerSequenceProbe(call.run.stream, offset) ? call.code : kNoMatch;
}

// Sorted by code, for the search below.
constexpr ProbeEntry kProbes[] = {
    {1003, NoProbe},
    {1007, NoProbe},
    {1010, OfStream<HeaderChecksumProbe>},
    {1018, NoProbe},
    {1019, OfStream<EscapeSequenceProbe>},
    {1020, NoProbe},
    {1021, MarkerSequence<120>},
    {1023, NoProbe},
    {1025, NoProbe},
    {1028, RichText},
    {1034, NoProbe},
    {1041, NoProbe},
    {1057, OfStream<HighByteDensityProbe>},
    {1077, MarkerSequence<118>},
    {1082, OfStream<ProbeLegacyDocument>},
    {1108, NoProbe},
    {1141, OfStream<CardCalendarProbe>},
    {1143, MessageClass},
    {1146, OfStream<ProbeWordFib>},
    {1168, OfStream<VersionDigitProbe>},
    {1187, Mail},
    {1190, NoProbe},
    {1201, NoProbe},
    {1206, NoProbe},
    {1210, NoProbe},
    {1212, NoProbe},
    {1213, NoProbe},
    {1224, OfStream<ProbeNumberedStorages>},
    {1311, MessageClass},
    {1341, NoProbe},
    {1342, NoProbe},
    {1416, NoProbe},
    {1417, NoProbe},
    {1445, OfStream<ProbeNativeContentMain>},
    {1446, OfStream<ProbeWorkbook>},
    {1447, PerfectOfficeMain},
    {1450, PerfectOfficeMain},
    {1453, PerfectOfficeMain},
    {1472, OfStream<DifProbe>},
    {1504, OfStream<EpsPreviewProbe>},
    {1505, NoProbe},
    {1515, NoProbe},
    {1518, NoProbe},
    {1528, NoProbe},
    {1535, NoProbe},
    {1544, NoProbe},
    {1557, NoProbe},
    {1569, NoProbe},
    {1570, NoProbe},
    {1571, OfStream<XBitmapProbe>},
    {1572, NoProbe},
    {1575, NoProbe},
    {1579, OfStream<ProbeDesignerDoc>},
    {1580, NoProbe},
    {1588, NoProbe},
    {1597, OfStream<ProbeVisioDocument>},
    {1601, OfStream<RecordTripletProbe>},
    {1631, OfStream<ProbeVisioDocument>},
    {1644, OfStream<TextVersionProbe>},
    {1705, NoProbe},
    {1710, NoProbe},
    {1716, NoProbe},
    {1720, NoProbe},
    {1721, NoProbe},
    {1723, OfStream<IsoMediaProbe>},
    {1726, NoProbe},
    {1730, OfStream<OggProbe>},
    {1802, Package},
    {1803, NoProbe},
    {1807, NoProbe},
    {1814, NoProbe},
    {1820, NoProbe},
    {1999, Classifier},
    {2007, NoProbe},
    {2202, OfStream<ProbeContentsStream>},
    {2233, NoProbe},
    {2400, NoProbe},
    {2404, Font},
    {2405, NoProbe},
    {2406, Font},
    {4050, OfStream<EncodedTextProbe>},
    {5004, OfStream<PictHeaderProbe>},
    {6100, OfStream<Ad1Probe>},
    {6102, OfStream<Ad1EncryptedProbe>},
    {6103, OfStream<EnCaseEx01Probe>},
    {6104, OfStream<EnCaseL01Probe>},
    {6106, OfStream<EnCaseLx01Probe>},
    {6108, OfStream<EnCaseE01Probe>},
    {6200, OfStream<PtfHeaderProbe>},
    {6201, NoProbe},
    {6202, NoProbe},
    {6203, NoProbe},
};

constexpr bool IsSorted() {
  for (size_t i = 1; i < std::size(kProbes); ++i) {
    if (kProbes[i - 1].code >= kProbes[i].code) return false;
  }
  return true;
}
static_assert(IsSorted());

}  // namespace

const ProbeEntry* FindProbe(uint16_t code) {
  const ProbeEntry* entry = std::lower_bound(
      std::begin(kProbes), std::end(kProbes), code,
      [](const ProbeEntry& probe, uint16_t wanted) { return probe.code < wanted; });
  return entry != std::end(kProbes) && entry->code == code ? entry : nullptr;
}

}  // namespace fi
