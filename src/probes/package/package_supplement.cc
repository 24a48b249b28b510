#include "probes/package/package_supplement.h"

#include <cstdint>

#include "platform/io.h"
#include "probes/ooxml/ooxml_repair.h"
#include "probes/opendocument/media_types.h"
#include "probes/opendocument/opendocument_repair.h"
#include "probes/package/dispatcher.h"
#include "probes/package/member_names.h"
#include "registry/format_ids.h"
#include "stream/id_stream.h"
#include "stream/package_member.h"

namespace fi {
namespace {

using Step = FormatId (*)(IOHandle* package);

// The most explicit first: a media type, then relationships, then names.
constexpr Step kSteps[] = {
    FormatOfMimetypeMember, FormatOfManifestRoot, RepairedOfficeOpenXml, FormatOfMembers,
    FormatOfNames,          FormatOfContentBody,  FormatOfJavaArchive,
};

FormatId RunSteps(IOHandle* package) {
  for (const Step step : kSteps) {
    const FormatId id = step(package);
    if (id != kNoMatch) return id;
  }
  return kNoMatch;
}

// A package without a member has lost its directory as well: the file began with one.
bool HasAnyMember(IOHandle* package) {
  IOMemberName member = {0, nullptr};
  return io::GetInfo(package, kIoInfoMemberName, &member);
}

// Some writers put names into the package as their system has them.
bool IsDividedByBackslashes(IOHandle* package) {
  return HasMember(package, "_rels\\.rels") || HasMember(package, "META-INF\\manifest.xml");
}

}  // namespace

FormatId PackageSupplement(const IdentificationStream* stream) {
  IOHandle* handle = stream->handle;
  if (const io::OwnedHandle package = OpenPackage(handle)) {
    if (HasAnyMember(package.get()) && !IsDividedByBackslashes(package.get())) {
      return RunSteps(package.get());
    }
  }
  const io::OwnedHandle package = OpenRepairedPackage(handle);
  if (package != nullptr) {
    FormatId id = FormatOfPackage(package.get(), *stream->job).id;
    if (id == kFormatZip || id == kNoMatch) id = RunSteps(package.get());
    if (id == kNoMatch) id = FormatOfCutDocument(package.get());
    if (id != kNoMatch) return id;
  }
  return FormatOfMimetypeAtHead(handle);
}

}  // namespace fi
