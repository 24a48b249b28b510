#include "api/supplement.h"

#include <algorithm>
#include <iterator>

#include "probes/media/iso_brands.h"
#include "probes/media/ogg.h"
#include "probes/package/package_supplement.h"
#include "probes/storage/message_class.h"
#include "probes/storage/unknown_storages.h"
#include "probes/text/plain_text.h"
#include "registry/format_ids.h"
#include "stream/file_bytes.h"
#include "tables/supplement_table.h"
#include "tables/text_probes.h"

namespace fi {
namespace {

SupplementAnswer Content(FormatId id) {
  if (id == kNoMatch) return {};
  return {id, kFiBasisContent};
}

}  // namespace

bool IsGeneralAnswer(FormatId id) {
  constexpr FormatId kGeneral[] = {kNoMatch,
                                   kFormatUnknown,
                                   kFormatZip,
                                   kFormatOgg,
                                   kFormatIsoMedia,
                                   kFormatPlainUtf16Text,
                                   kFormatPlainAsciiText,
                                   kFormatPlainCodePageText,
                                   kFormatPlainUtf8Text};
  return std::find(std::begin(kGeneral), std::end(kGeneral), id) != std::end(kGeneral);
}

SupplementAnswer AskSupplementSignatures(SignatureRun& run) {
  const WalkResult match = WalkSupplement(run);
  if (match.id == kNoMatch) return {};
  return {match.id, BasisOfSupplementRow(match.row)};
}

SupplementAnswer RefineGeneralAnswer(SignatureRun& run, FormatId id) {
  switch (id) {
    case kFormatUnknown:
      if (run.isStorage) return Content(ProbeUnknownStorage(run.stream, run.classId));
      [[fallthrough]];
    case kFormatPlainUtf16Text:
    case kFormatPlainAsciiText:
    case kFormatPlainCodePageText:
    case kFormatPlainUtf8Text:
      return Content(TextFormatProbe(run.stream, run.extension.data()));
    case kFormatIsoMedia:
      return Content(IsoBrandProbe(run.stream));
    case kFormatOgg:
      return Content(OtherOggCodecProbe(run.stream));
    case kFormatZip:
      return Content(PackageSupplement(run.stream));
    case kFormatOutlookMessage:
    case kFormatOutlookItemTemplate:
      return Content(MapWideMessageClass(run.stream, id));
    default:
      return {};
  }
}

bool BeginsBinary(IdentificationStream* stream) {
  const FileBytes<512> head(stream, 0);
  return IsBinaryHead({reinterpret_cast<const uint8_t*>(head.View().data()), head.size()});
}

}  // namespace fi
