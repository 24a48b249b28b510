#include "properties/puid/puid.h"

#include <algorithm>
#include <iterator>

#include "properties/record/short_text.h"
#include "registry/format_ids.h"
#include "stream/package_member.h"

namespace fi {
namespace {

PuidText Store(std::string_view text) {
  PuidText puid{};
  text.substr(0, puid.size() - 1).copy(puid.data(), puid.size() - 1);
  return puid;
}

PuidText Spell(uint16_t number) {
  ShortText text(number >= kOtherSeries ? "x-fmt/" : "fmt/");
  text.AppendNumber(number >= kOtherSeries ? number - kOtherSeries : number);
  return Store(text.view());
}

// Formats with one candidate that stand for other kinds of file too: general answers, and formats
// that the registry divides by content not read here.
constexpr FormatId kOpen[] = {
    kFormatWord6Or95,
    kFormatExcel5Or95,
    kFormatAdobeInDesign,
    kFormatIsoMedia,
    kFormatRiff,
    kFormatOgg,
    kFormatUnknown,
    kFormatUnknownCompoundFile,
    kFormatMxf,
    kFormatMobipocketKindleBook,
    kFormatXml,
    kFormatLatex,
    kFormatBinaryPropertyList,
    kFormatSketchUpModel,
    kFormatPageMaker,
    kFormatPlainUtf16Text,
    kFormatPlainAsciiText,
    kFormatPlainCodePageText,
    kFormatPlainUtf8Text,
};

bool IsOpen(FormatId id) {
  return std::find(std::begin(kOpen), std::end(kOpen), id) != std::end(kOpen);
}

// Whether a ZIP archive looks like a package of a document that nothing else was recognised of.
bool HoldsDocument(IOHandle* handle) {
  const io::OwnedHandle package = OpenPackage(handle);
  if (package == nullptr) return true;
  for (const std::string_view member :
       {"mimetype", "[Content_Types].xml", "_rels/.rels", "META-INF/manifest.xml", "content.xml",
        "META-INF/container.xml", "index.xml", "index.apxl", "Index.zip", "content/riffData.cdr",
        "ppt/presentation.xml", "FixedDocumentSequence.fdseq",
        "Metadata/BuildVersionHistory.plist"}) {
    if (HasMember(package.get(), member)) return true;
  }
  return false;
}

}  // namespace

PuidText ExactPuid(IdentificationStream* stream, FormatId id, const PropertySet& properties,
                   std::string_view candidates) {
  // What is damaged does not tell whether it is a special kind.
  if (IsOpen(id) || properties.Has(Property::kDamaged)) return {};
  if (const uint16_t number = PuidByProperties(id, properties); number != 0) return Spell(number);
  if (const uint16_t number = PuidByBytes(stream, id); number != 0) return Spell(number);
  // Without the stream of its user a presentation may be one of an earlier version.
  if (id == kFormatPowerPoint97 && !properties.Has(Property::kEncryption)) return {};
  // A profile that no row knows makes the file another kind than the plain one.
  if ((id == kFormatTiff || id == kFormatSqlite) && properties.Has(Property::kProfile)) return {};
  if (id == kFormatZip && HoldsDocument(stream->handle)) return {};
  const bool isOnly = !candidates.empty() && candidates.find(',') == std::string_view::npos;
  return isOnly ? Store(candidates) : PuidText{};
}

}  // namespace fi
