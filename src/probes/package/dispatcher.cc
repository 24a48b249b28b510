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

using PackageStep = PackageAnswer (*)(IOHandle* package);

// The order decides between probes: the first probe to end the chain hides all later ones.
constexpr PackageStep kBeforeArchive[] = {
    OfficeOpenXmlProbe,  OpenDocumentProbe,    MailArchiveProbe,
    DrawingPackageProbe, IworkXmlPackageProbe,
};
constexpr PackageStep kBehindArchive[] = {MessageExportManifestProbe, ShortMessageManifestProbe};

// The last format that a probe names, `id` where none does.
template <size_t count>
PackageAnswer RunChain(const PackageStep (&steps)[count], IOHandle* package, FormatId id) {
  for (const PackageStep step : steps) {
    const PackageAnswer answer = step(package);
    if (answer.id != kNoMatch) id = answer.id;
    if (answer.ends) return EndsWith(id);
  }
  return {.id = id};
}

}  // namespace

PackageFormat PackageProbe(IdentificationStream* stream) {
  const io::OwnedHandle package = OpenPackage(stream->handle);
  return package == nullptr ? PackageFormat{kFormatZip}
                            : FormatOfPackage(package.get(), *stream->job);
}

PackageFormat FormatOfPackage(IOHandle* package, const IdentificationJob& job) {
  SetByNameAccess(package);
  const PackageAnswer document = RunChain(kBeforeArchive, package, kFormatZip);
  if (document.ends) return {document.id};
  // Its answer stands alone: what a probe before it named without ending the chain is dropped.
  const PackageAnswer archive = IworkArchiveProbe(package, job);
  if (archive.ends) return {archive.id, archive.status};
  return {RunChain(kBehindArchive, package, archive.id).id};
}

}  // namespace fi
