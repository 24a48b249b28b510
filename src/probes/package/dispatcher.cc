// The file is opened once as a package, and handed from probe to probe until one ends the chain.

#include "probes/package/dispatcher.h"

#include "platform/io.h"
#include "probes/iwork/iwork_archive.h"
#include "probes/iwork/iwork_xml.h"
#include "probes/ooxml/ooxml.h"
#include "probes/opendocument/opendocument.h"
#include "probes/package/drawing_package.h"
#include "probes/package/mail_archive.h"
#include "probes/package/message_exports.h"
#include "registry/format_ids.h"
#include "stream/package_member.h"

namespace fi {
namespace {

using PackageStep = GoOn (*)(IOHandle* package, FormatId* id);

// The order is that of the answers: a probe that ends the chain hides those behind it.
constexpr PackageStep kBeforeArchive[] = {
    OfficeOpenXmlProbe,  OpenDocumentProbe,    MailArchiveProbe,
    DrawingPackageProbe, IworkXmlPackageProbe,
};
constexpr PackageStep kBehindArchive[] = {MessageExportManifestProbe, ShortMessageManifestProbe};

template <size_t count>
GoOn RunChain(const PackageStep (&steps)[count], IOHandle* package, FormatId* id) {
  for (const PackageStep step : steps) {
    if (step(package, id) == kChainEnds) return kChainEnds;
  }
  return kGoOn;
}

}  // namespace

FormatId PackageProbe(IdentificationStream* stream, int32_t* extra) {
  *extra = 0;
  const io::OwnedHandle package = OpenPackage(stream->handle);
  return package == nullptr ? kFormatZip : FormatOfPackage(package.get(), *stream->job, extra);
}

FormatId FormatOfPackage(IOHandle* package, const IdentificationJob& job, int32_t* extra) {
  *extra = 0;
  SetByNameAccess(package);
  FormatId id = kFormatZip;
  if (RunChain(kBeforeArchive, package, &id) == kChainEnds) return id;
  const GoOn result = IworkArchiveProbe(package, job, &id);
  if (id == kFormatEncryptedIWork) {
    *extra = static_cast<int16_t>(result);
    return id;
  }
  if (result != kChainEnds) (void)RunChain(kBehindArchive, package, &id);
  return id;
}

}  // namespace fi
