#include "probes/opendocument/opendocument_repair.h"

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/io.h"
#include "platform/xml.h"
#include "probes/opendocument/media_types.h"
#include "stream/id_stream.h"
#include "stream/package_member.h"
#include "stream/xml_scan.h"

namespace fi {
namespace {

// Starts and ends of elements that are looked at: entries of a manifest, and the styles of a
// document, which stand in front of its body.
constexpr uint32_t kMostElements = 20000;

constexpr char kOfficeNamespace[] = "urn:oasis:names:tc:opendocument:xmlns:office:1.0";

enum : uint32_t { kTagFileEntry = 1, kTagContent = 2, kTagBody = 3, kTagKinds = 4 };
constexpr UTXMLTagName kManifestTags[] = {{kTagFileEntry, "file-entry"}};

// The kinds in the order of kKindTypes.
constexpr UTXMLTagName kContentTags[] = {
    {kTagContent, "document-content"}, {kTagBody, "body"},
    {kTagKinds + 0, "text"},           {kTagKinds + 1, "spreadsheet"},
    {kTagKinds + 2, "presentation"},   {kTagKinds + 3, "drawing"},
    {kTagKinds + 4, "chart"},          {kTagKinds + 5, "image"},
    {kTagKinds + 6, "database"},
};
constexpr std::string_view kKindTypes[] = {
    "application/vnd.oasis.opendocument.text",
    "application/vnd.oasis.opendocument.spreadsheet",
    "application/vnd.oasis.opendocument.presentation",
    "application/vnd.oasis.opendocument.graphics",
    "application/vnd.oasis.opendocument.chart",
    "application/vnd.oasis.opendocument.image",
    "application/vnd.oasis.opendocument.base",
};

bool IsVersion12(UTXMLReader* reader) {
  const char16_t* version = Attribute(reader, "version").data();
  return version != nullptr && BeginsWith(version, "1.2");
}

FormatId FormatOfEntry(UTXMLReader* reader, IOHandle* package) {
  const std::u16string_view mediaType = Attribute(reader, "media-type");
  if (mediaType.size() > kMaxMediaType) return kNoMatch;
  std::array<char, kMaxMediaType> narrow{};
  for (size_t i = 0; i < mediaType.size(); ++i) {
    if (mediaType[i] > 0x7E) return kNoMatch;
    narrow[i] = static_cast<char>(mediaType[i]);
  }
  return FormatOfMediaType(package, {narrow.data(), mediaType.size()}, IsVersion12(reader));
}

}  // namespace

FormatId FormatOfManifestRoot(IOHandle* package) {
  const io::OwnedHandle manifest = OpenMember(package, "META-INF/manifest.xml");
  if (manifest == nullptr) return kNoMatch;
  xml::ScopedReader reader(manifest.get());
  if (!reader ||
      !AddTagMap(reader.get(), "urn:oasis:names:tc:opendocument:xmlns:manifest:1.0", 1,
                 kManifestTags) ||
      !AddTagMap(reader.get(), "http://openoffice.org/2001/manifest", 2, kManifestTags)) {
    return kNoMatch;
  }
  UTXMLTag tag{};
  for (uint32_t i = 0; i < kMostElements && NextElement(reader.get(), &tag); ++i) {
    if (tag.id != kTagFileEntry || IsEndTag(tag)) continue;
    if (Attribute(reader.get(), "full-path") == u"/") return FormatOfEntry(reader.get(), package);
  }
  return kNoMatch;
}

FormatId FormatOfContentBody(IOHandle* package) {
  const io::OwnedHandle content = OpenMember(package, "content.xml");
  if (content == nullptr) return kNoMatch;
  xml::ScopedReader reader(content.get());
  if (!reader || !AddTagMap(reader.get(), kOfficeNamespace, 1, kContentTags)) return kNoMatch;
  UTXMLTag tag{};
  if (!NextElement(reader.get(), &tag) || tag.id != kTagContent) return kNoMatch;
  const bool version12 = IsVersion12(reader.get());
  bool inBody = false;
  for (uint32_t i = 0; i < kMostElements && NextElement(reader.get(), &tag); ++i) {
    if (inBody) {
      if (tag.id < kTagKinds || IsEndTag(tag)) return kNoMatch;
      return FormatOfMediaType(package, kKindTypes[tag.id - kTagKinds], version12);
    }
    inBody = tag.id == kTagBody && !IsEndTag(tag);
  }
  return kNoMatch;
}

}  // namespace fi
