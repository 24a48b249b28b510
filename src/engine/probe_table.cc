#include "engine/probe_table.h"

#include <algorithm>
#include <iterator>

#include "platform/format_ids.h"
#include "probes/content/encoded_text.h"
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

FormatId Classifier(const ProbeCall& call) {
  call.run.classifierRan = 1;
  FormatId id = kFormatUnknown;
  call.run.status = ClassifyCompoundDocument(call.run.stream, call.run.extension.data(), &id);
  return id;
}

// Sorted by code, for the search below.
constexpr ProbeEntry kProbes[] = {
    {1003, NoProbe},
    {1007, NoProbe},
    {1010, NoProbe},
    {1018, NoProbe},
    {1019, NoProbe},
    {1020, NoProbe},
    {1021, NoProbe},
    {1023, NoProbe},
    {1025, NoProbe},
    {1028, RichText},
    {1034, NoProbe},
    {1041, NoProbe},
    {1057, NoProbe},
    {1077, NoProbe},
    {1082, OfStream<ProbeLegacyDocument>},
    {1108, NoProbe},
    {1141, NoProbe},
    {1143, MessageClass},
    {1146, OfStream<ProbeWordFib>},
    {1168, NoProbe},
    {1187, NoProbe},
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
    {1472, NoProbe},
    {1504, NoProbe},
    {1505, NoProbe},
    {1515, NoProbe},
    {1518, NoProbe},
    {1528, NoProbe},
    {1535, NoProbe},
    {1544, NoProbe},
    {1557, NoProbe},
    {1569, NoProbe},
    {1570, NoProbe},
    {1571, NoProbe},
    {1572, NoProbe},
    {1575, NoProbe},
    {1579, OfStream<ProbeDesignerDoc>},
    {1580, NoProbe},
    {1588, NoProbe},
    {1597, OfStream<ProbeVisioDocument>},
    {1601, NoProbe},
    {1631, OfStream<ProbeVisioDocument>},
    {1644, NoProbe},
    {1705, NoProbe},
    {1710, NoProbe},
    {1716, NoProbe},
    {1720, NoProbe},
    {1721, NoProbe},
    {1723, NoProbe},
    {1726, NoProbe},
    {1730, NoProbe},
    {1802, NoProbe},
    {1803, NoProbe},
    {1807, NoProbe},
    {1814, NoProbe},
    {1820, NoProbe},
    {1999, Classifier},
    {2007, NoProbe},
    {2202, OfStream<ProbeContentsStream>},
    {2233, NoProbe},
    {2400, NoProbe},
    {2404, NoProbe},
    {2405, NoProbe},
    {2406, NoProbe},
    {4050, OfStream<EncodedTextProbe>},
    {5004, NoProbe},
    {6100, NoProbe},
    {6102, NoProbe},
    {6103, NoProbe},
    {6104, NoProbe},
    {6106, NoProbe},
    {6108, NoProbe},
    {6200, NoProbe},
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
