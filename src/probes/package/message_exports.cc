// One export holds transcripts with the extension ptf and a manifest in XML, the other a manifest
// in JSON, whose name is enough.

#include "probes/package/message_exports.h"

#include <cstdint>
#include <string_view>

#include "platform/io.h"
#include "platform/xml.h"
#include "registry/format_ids.h"
#include "stream/xml_scan.h"

namespace fi {
namespace {

// Members whose names are looked at, so that a list without an end cannot hold the probe up.
constexpr uint32_t kMostNames = 1 << 20;

enum : uint32_t { kTagExport = 401, kTagTranscript = 402 };
constexpr UTXMLTagName kManifestTags[] = {{kTagExport, "XMEF"}, {kTagTranscript, "Transcript"}};

// The whole name where it has no dot.
bool HasPtfExtension(std::string_view name) {
  constexpr std::string_view kWanted = "ptf";
  const std::string_view extension = name.substr(name.rfind('.') + 1);
  if (extension.size() != kWanted.size()) return false;
  for (size_t i = 0; i < kWanted.size(); ++i) {
    const char c = extension[i];
    if ((c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c) != kWanted[i]) return false;
  }
  return true;
}

bool HasPtfMember(IOHandle* package) {
  IOMemberName member = {0, nullptr};
  for (uint32_t i = 0; i < kMostNames; ++i) {
    member.index = i;
    if (!io::GetInfo(package, kIoInfoMemberName, &member) || member.name == nullptr) return false;
    if (HasPtfExtension(member.name)) return true;
  }
  return false;
}

// Whether a transcript follows the start of the export. Deliberate: it need not lie inside it.
bool ListsTranscript(IOHandle* manifest) {
  xml::ScopedReader reader(manifest);
  if (!reader) return false;
  SetPackageOption(reader.get());
  if (!AddTagMap(reader.get(), "", 400, kManifestTags)) return false;
  bool inExport = false;
  UTXMLTag tag{};
  while (NextElement(reader.get(), &tag)) {
    if (tag.id == kTagExport) inExport = true;
    if (tag.id == kTagTranscript && inExport) return true;
  }
  return false;
}

}  // namespace

PackageAnswer MessageExportManifestProbe(IOHandle* package) {
  if (!HasPtfMember(package)) return kGoOn;
  const io::OwnedHandle manifest = OpenMember(package, "XMEFManifest.xml");
  if (manifest == nullptr || !ListsTranscript(manifest.get())) return kGoOn;
  return EndsWith(kFormatMessageExportTranscript);
}

PackageAnswer ShortMessageManifestProbe(IOHandle* package) {
  if (!HasMember(package, "qtlf_manifest.json")) return kGoOn;
  return EndsWith(kFormatShortMessageExportPackage);
}

}  // namespace fi
