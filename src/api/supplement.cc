#include "api/supplement.h"

#include <algorithm>
#include <iterator>

#include "engine/signature_walk.h"
#include "platform/format_ids.h"
#include "probes/buffered_scan.h"
#include "probes/storage/message_class.h"
#include "probes/storage/unknown_storages.h"
#include "probes/text_formats/text_formats.h"

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
      if (BeginsBinary(run.stream)) return {};
      [[fallthrough]];
    case kFormatPlainUtf16Text:
    case kFormatPlainAsciiText:
    case kFormatPlainCodePageText:
    case kFormatPlainUtf8Text:
      return Content(TextFormatProbe(run.stream, run.extension.data()));
    case kFormatOutlookMessage:
    case kFormatOutlookItemTemplate:
      return Content(MapWideMessageClass(run.stream, id));
    default:
      return {};
  }
}

bool BeginsBinary(IdentificationStream* stream) {
  constexpr uint32_t kHead = 512;
  if (!MoveTo(stream, 0)) return false;
  const uint32_t first = IdStreamGetByte(stream);  // fills the buffer where that is due
  if (first == kEndOfData) return false;
  const auto buffered = static_cast<uint32_t>(std::max(stream->remaining, 0));
  const uint32_t head = std::min(kHead, buffered);
  return first == 0 || BufferedBytesBefore(stream, '\0', head) < head;
}

}  // namespace fi
