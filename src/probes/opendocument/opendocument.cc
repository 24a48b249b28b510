// The manifest's entry for the package itself, "/", holds the media type of the document, and from
// version 1.2 on its version; "meta.xml" names the generator. OpenOffice.org 1.x and StarOffice 6
// and 7 wrote the same members with media types and namespaces of their own.

#include "probes/opendocument/opendocument.h"

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/io.h"
#include "platform/xml.h"
#include "registry/format_ids.h"
#include "stream/xml_scan.h"

namespace fi {
namespace {

enum Generation : uint8_t { kNoGeneration, kOpenOffice1, kPlain, kVersion12, kGenerator4 };
enum Producer : uint8_t { kUnknown, kStarOffice, kSymphony, kQuorin, kLibreOffice, kOpenOffice };
enum Kind : uint8_t { kNoKind, kText, kSpreadsheet, kPresentation, kDrawing };
constexpr size_t kGenerations = 4;
constexpr size_t kProducers = 6;
constexpr size_t kKinds = 4;

// By generation, then producer, then kind, each in the order of its enumeration.
constexpr FormatId kFormats[kGenerations][kProducers][kKinds] = {
    {{1323, 1461, 2203, 2206},
     {1188, 1452, 1627, 1626},
     {1323, 1461, 2203, 2206},
     {1323, 1461, 2203, 2206},
     {1323, 1461, 2203, 2206},
     {1323, 1461, 2203, 2206}},
    {{1324, 1462, 2204, 2207},
     {1309, 1454, 1633, 1632},
     {1325, 1463, 2205, 2207},
     {1324, 1462, 2204, 2207},
     {1324, 1462, 2204, 2207},
     {1324, 1462, 2204, 2207}},
    {{1331, 1468, 2214, 2215},
     {1332, 1473, 2218, 2219},
     {1331, 1468, 2214, 2215},
     {1333, 1474, 2220, 2221},
     {1379, 1496, 2253, 2254},
     {1382, 1498, 2257, 2258}},
    {{1380, 1497, 2255, 2256},
     {1380, 1497, 2255, 2256},
     {1380, 1497, 2255, 2256},
     {1380, 1497, 2255, 2256},
     {1380, 1497, 2255, 2256},
     {1383, 1499, 2259, 2260}},
};

// Beginnings of what follows the prefix of a media type.
struct KindWord {
  std::string_view beginning;
  Kind kind;
};

constexpr std::string_view kLegacyPrefix = "application/vnd.sun.xml.";
constexpr KindWord kLegacyWords[] = {
    {"writer", kText},  {"text", kText},        {"calc", kSpreadsheet},
    {"draw", kDrawing}, {"graphics", kDrawing}, {"impress", kPresentation},
};

// Deliberate: of "spreadsheet" four letters are compared.
constexpr std::string_view kOasisPrefix = "application/vnd.oasis.opendocument.";
constexpr KindWord kOasisWords[] = {
    {"text", kText},
    {"spre", kSpreadsheet},
    {"graphics", kDrawing},
    {"presentation", kPresentation},
};

// The first that fits decides. Each name is that of its suite's generator texts, such as
// "LibreOffice/7.3.2$Linux_X86_64 ...".
struct GeneratorName {
  std::string_view beginning;
  Producer producer;
  Generation generation;  // kNoGeneration: as the manifest says
};
constexpr GeneratorName kGenerators[] = {
    {"LibreOffice/4.", kLibreOffice, kGenerator4},  {"LibreOffice", kLibreOffice, kNoGeneration},
    {"OpenOffice/4.", kOpenOffice, kGenerator4},    {"OpenOffice", kOpenOffice, kNoGeneration},
    {"Lotus Symphony", kSymphony, kNoGeneration},   {"StarOffice", kStarOffice, kNoGeneration},
    {"Quorin_Open_Office", kQuorin, kNoGeneration},
};

constexpr uint32_t kOasisNumber = 4000;
constexpr uint32_t kLegacyNumber = 4001;
constexpr uint32_t kMetaNumber = 4002;
enum : uint32_t { kTagFileEntry = 4101, kTagGenerator = 4201 };
constexpr UTXMLTagName kManifestTags[] = {{kTagFileEntry, "file-entry"}};
constexpr UTXMLTagName kMetaTags[] = {{kTagGenerator, "generator"}};

// Elements of other names that may stand before the root entry, the manifest element among them.
// Where the limit is reached the manifest counts as one without a root entry.
constexpr uint32_t kMostOtherElements = 25;

constexpr uint32_t kMostGeneratorCharacters = 256;

struct Document {
  Generation generation = kNoGeneration;
  Kind kind = kNoKind;
  Producer producer = kUnknown;
};

template <size_t count>
Kind KindOf(const char16_t* rest, const KindWord (&words)[count]) {
  for (const KindWord& word : words) {
    if (BeginsWith(rest, word.beginning)) return word.kind;
  }
  return kNoKind;
}

// Takes generation and kind from the media type of a root entry, in the namespace of OpenOffice.org
// 1.x or the later one. False when it belongs to neither family; the kind may stay unknown.
bool ReadMediaType(const char16_t* mediaType, bool oldNamespace, bool version12,
                   Document* document) {
  if (BeginsWith(mediaType, kLegacyPrefix)) {
    document->generation = oldNamespace ? kOpenOffice1 : kPlain;
    document->kind = KindOf(mediaType + kLegacyPrefix.size(), kLegacyWords);
    return true;
  }
  if (!BeginsWith(mediaType, kOasisPrefix)) return false;
  document->generation = version12 ? kVersion12 : kPlain;
  document->kind = KindOf(mediaType + kOasisPrefix.size(), kOasisWords);
  return true;
}

// Looks at the file entry that the reader stands at. True when it is the root entry of one of the
// two families, whether or not its kind is known.
bool ReadRootEntry(UTXMLReader* reader, const UTXMLTag& tag, Document* document) {
  if (Attribute(reader, "full-path") != u"/") return false;
  const char16_t* mediaType = Attribute(reader, "media-type").data();
  if (mediaType == nullptr) return false;
  // Deliberate: later versions count as plain OpenDocument.
  const char16_t* version = Attribute(reader, "version").data();
  const bool version12 = version != nullptr && BeginsWith(version, "1.2");
  return ReadMediaType(mediaType, tag.namespaceNumber != kOasisNumber, version12, document);
}

void ReadManifest(IOHandle* member, Document* document) {
  xml::ScopedReader reader(member);
  if (!reader) return;
  SetPackageOption(reader.get());
  if (!AddTagMap(reader.get(), "urn:oasis:names:tc:opendocument:xmlns:manifest:1.0", kOasisNumber,
                 kManifestTags) ||
      !AddTagMap(reader.get(), "http://openoffice.org/2001/manifest", kLegacyNumber,
                 kManifestTags)) {
    return;
  }
  uint32_t otherElements = 0;
  UTXMLTag tag{};
  while (otherElements < kMostOtherElements && NextElement(reader.get(), &tag)) {
    if (IsEndTag(tag)) continue;
    if (tag.id != kTagFileEntry) {
      ++otherElements;
    } else if (ReadRootEntry(reader.get(), tag, document)) {
      return;
    }
  }
}

void ReadGenerator(IOHandle* member, Document* document) {
  xml::ScopedReader reader(member);
  if (!reader) return;
  SetPackageOption(reader.get());
  if (!AddTagMap(reader.get(), "urn:oasis:names:tc:opendocument:xmlns:meta:1.0", kMetaNumber,
                 kMetaTags) ||
      !AddTagMap(reader.get(), "http://openoffice.org/2000/meta", kMetaNumber, kMetaTags)) {
    return;
  }
  UTXMLTag tag{};
  do {
    if (!NextElement(reader.get(), &tag)) return;
  } while (tag.id != kTagGenerator);

  std::array<char16_t, kMostGeneratorCharacters + 1> text{};
  uint32_t length = 0;
  if (UTXMLReadContent(reader.get(), 1, text.data(), kMostGeneratorCharacters, &length) != kXmlOk) {
    return;
  }
  for (const GeneratorName& name : kGenerators) {
    if (!BeginsWith(text.data(), name.beginning)) continue;
    document->producer = name.producer;
    if (name.generation != kNoGeneration) document->generation = name.generation;
    return;
  }
}

// The kind is known.
FormatId FormatOf(IOHandle* package, Document document) {
  if (package != nullptr) {
    if (const io::OwnedHandle meta = OpenMember(package, "meta.xml")) {
      ReadGenerator(meta.get(), &document);
    }
  }
  return kFormats[document.generation - 1][document.producer][document.kind - 1];
}

}  // namespace

FormatId OpenDocumentOfType(IOHandle* package, const char16_t* mediaType, bool version12) {
  Document document;
  if (!ReadMediaType(mediaType, true, version12, &document) || document.kind == kNoKind) {
    return kFormatZip;
  }
  return FormatOf(package, document);
}

PackageAnswer OpenDocumentProbe(IOHandle* package) {
  SetByNameAccess(package);
  const io::OwnedHandle manifest = OpenMember(package, "meta-inf/manifest.xml");
  if (manifest == nullptr) return kGoOn;
  Document document;
  ReadManifest(manifest.get(), &document);
  if (document.kind == kNoKind) return kChainEnds;
  return EndsWith(FormatOf(package, document));
}

}  // namespace fi
