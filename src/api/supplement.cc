#include "api/supplement.h"

#include <algorithm>
#include <iterator>

#include "probes/media/iso_brands.h"
#include "probes/media/ogg.h"
#include "probes/media/riff.h"
#include "probes/package/package_supplement.h"
#include "probes/storage/message_class.h"
#include "probes/storage/unknown_storages.h"
#include "probes/text/plain_text.h"
#include "probes/text/rare_text.h"
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

SupplementAnswer RefineUnknown(SignatureRun& run, FormatId /*id*/) {
  if (run.isStorage) {
    const FormatId id = ProbeUnknownStorage(run.stream, run.classId);
    return Content(id != kNoMatch ? id : kFormatUnknownCompoundFile);
  }
  const FormatId id = TextFormatProbe(run.stream, run.extension.data());
  return Content(id != kNoMatch ? id : RareTextProbe(run.stream));
}

SupplementAnswer RefineText(SignatureRun& run, FormatId id) {
  if (id == kFormatPlainUtf16Text && IsMarkedUtf32(run.stream)) {
    return Content(kFormatPlainUtf32Text);
  }
  return Content(TextFormatProbe(run.stream, run.extension.data()));
}

SupplementAnswer RefineOgg(SignatureRun& run, FormatId /*id*/) {
  return Content(OtherOggCodecProbe(run.stream));
}

SupplementAnswer RefineIsoMedia(SignatureRun& run, FormatId /*id*/) {
  return Content(IsoBrandProbe(run.stream));
}

SupplementAnswer RefineRiff(SignatureRun& run, FormatId /*id*/) {
  return Content(OtherRiffFormProbe(run.stream));
}

SupplementAnswer RefineZip(SignatureRun& run, FormatId /*id*/) {
  return Content(PackageSupplement(run.stream));
}

SupplementAnswer RefineItem(SignatureRun& run, FormatId id) {
  return Content(MapWideMessageClass(run.stream, id));
}

struct GeneralFormat {
  FormatId id;
  SupplementAnswer (*refine)(SignatureRun& run, FormatId id);  // null: nothing looks further
};

constexpr GeneralFormat kGeneral[] = {
    {kNoMatch, nullptr},
    {kFormatUnknown, RefineUnknown},
    {kFormatZip, RefineZip},
    {kFormatRiff, RefineRiff},
    {kFormatOgg, RefineOgg},
    {kFormatIsoMedia, RefineIsoMedia},
    {kFormatOutlookMessage, RefineItem},
    {kFormatOutlookItemTemplate, RefineItem},
    {kFormatPlainUtf16Text, RefineText},
    {kFormatPlainAsciiText, RefineText},
    {kFormatPlainCodePageText, RefineText},
    {kFormatPlainUtf8Text, RefineText},
};

const GeneralFormat* FindGeneral(FormatId id) {
  const auto* found = std::find_if(std::begin(kGeneral), std::end(kGeneral),
                                   [id](const GeneralFormat& row) { return row.id == id; });
  return found != std::end(kGeneral) ? found : nullptr;
}

}  // namespace

bool IsGeneralAnswer(FormatId id) { return FindGeneral(id) != nullptr; }

SupplementAnswer SupplementAnswerOf(const WalkResult& match) {
  if (match.id == kNoMatch) return {};
  return {match.id, BasisOfSupplementRow(match.row)};
}

SupplementAnswer RefineGeneralAnswer(SignatureRun& run, FormatId id) {
  const GeneralFormat* general = FindGeneral(id);
  if (general == nullptr || general->refine == nullptr) return {};
  return general->refine(run, id);
}

bool BeginsBinary(IdentificationStream* stream) {
  const FileBytes<512> head(stream, 0);
  return IsBinaryHead({reinterpret_cast<const uint8_t*>(head.View().data()), head.size()});
}

}  // namespace fi
