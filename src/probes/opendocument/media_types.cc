#include "probes/opendocument/media_types.h"

#include <array>
#include <cstddef>

#include "platform/io.h"
#include "probes/opendocument/opendocument.h"
#include "registry/format_ids.h"
#include "stream/id_stream.h"
#include "stream/package_member.h"
#include "stream/text_view.h"

namespace fi {
namespace {

struct MediaType {
  std::string_view name;
  FormatId id;
};

// Those of OpenDocument that have identifiers by version and generator are not among them. The
// second name of databases is that of the first releases.
constexpr MediaType kMediaTypes[] = {
    {"application/epub+zip", kFormatEpub},
    {"application/hwp+zip", kFormatHwpx},
    {"application/vnd.adobe.air-application-installer-package+zip", kFormatAirApplication},
    {"application/vnd.adobe.indesign-idml-package", kFormatInDesignMarkup},
    {"application/vnd.adobe.sparkler.project+dcxucf", kFormatAdobeXd},
    {"application/vnd.adobe.xfl", kFormatFlashAuthoringPackage},
    {"application/vnd.etsi.asic-e+zip", kFormatAsicExtended},
    {"application/vnd.etsi.asic-s+zip", kFormatAsicSimple},
    {"application/vnd.makemusic.notation", kFormatFinaleNotation},
    {"application/vnd.oasis.opendocument.base", kFormatOpenDocumentDatabase},
    {"application/vnd.oasis.opendocument.chart", kFormatOpenDocumentChart},
    {"application/vnd.oasis.opendocument.chart-template", kFormatOpenDocumentChart},
    {"application/vnd.oasis.opendocument.database", kFormatOpenDocumentDatabase},
    {"application/vnd.oasis.opendocument.formula", kFormatOpenDocumentFormula},
    {"application/vnd.oasis.opendocument.formula-template", kFormatOpenDocumentFormula},
    {"application/vnd.oasis.opendocument.image", kFormatOpenDocumentImage},
    {"application/vnd.oasis.opendocument.image-template", kFormatOpenDocumentImage},
    {"application/vnd.openofficeorg.extension", kFormatOpenOfficeExtension},
    {"application/vnd.recordare.musicxml", kFormatCompressedMusicXml},
    {"application/vnd.sun.xml.base", kFormatOpenDocumentDatabase},
    {"application/vnd.sun.xml.math", kFormatOpenOffice1Formula},
    {"application/x-ibooks+zip", kFormatAppleIBook},
    {"application/x-krita", kFormatKrita},
    {"application/x-vnd.corel.designer.document+zip", kFormatCorelDesignerPackage},
    {"application/x-vnd.corel.draw.document+zip", kFormatCorelDrawPackage},
    {"application/x-vnd.corel.zcf.designer.document+zip", kFormatCorelDesignerPackage},
    {"application/x-vnd.corel.zcf.draw.document+zip", kFormatCorelDrawPackage},
    {"image/openraster", kFormatOpenRaster},
};

// Where the text of a member "mimetype" stands that is the first of its file and has no extra
// field: behind a header of 30 bytes and the name.
constexpr std::string_view kName = "mimetype";
constexpr size_t kNameAt = 30;
constexpr size_t kTextAt = kNameAt + kName.size();
constexpr size_t kMethodAt = 8;

bool IsMediaTypeCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
         std::string_view("/+-.").find(c) != std::string_view::npos;
}

// What may stand behind the media type in its member.
bool IsPadding(char c) { return IsSpaceOrTab(c) || IsLineEnd(c) || c == '\0'; }

}  // namespace

FormatId FormatOfMediaType(IOHandle* package, std::string_view mediaType, bool version12) {
  for (const MediaType& known : kMediaTypes) {
    if (known.name == mediaType) return known.id;
  }
  if (mediaType.size() > kMaxMediaType) return kNoMatch;
  std::array<char16_t, kMaxMediaType + 1> wide{};
  for (size_t i = 0; i < mediaType.size(); ++i) wide[i] = static_cast<unsigned char>(mediaType[i]);
  const FormatId id = OpenDocumentOfType(package, wide.data(), version12);
  return id == kFormatZip ? kNoMatch : id;
}

FormatId FormatOfMimetypeMember(IOHandle* package) {
  const io::OwnedHandle member = OpenMember(package, kName);
  if (member == nullptr) return kNoMatch;
  char buffer[kMaxMediaType + 1];
  std::string_view text = ReadHead(member.get(), buffer);
  if (text.size() > kMaxMediaType) return kNoMatch;
  while (!text.empty() && IsPadding(text.back())) text.remove_suffix(1);
  return FormatOfMediaType(package, text, false);
}

FormatId FormatOfMimetypeAtHead(IOHandle* file) {
  char buffer[kTextAt + kMaxMediaType];
  if (!io::Seek(file, kIoFromStart, 0)) return kNoMatch;
  const std::string_view head = ReadHead(file, buffer);
  if (head.size() < kTextAt || head[kMethodAt] != 0 || head[kMethodAt + 1] != 0) return kNoMatch;
  if (head.substr(kNameAt, kName.size()) != kName) return kNoMatch;
  std::string_view text = head.substr(kTextAt);
  size_t length = 0;
  while (length < text.size() && IsMediaTypeCharacter(text[length])) ++length;
  text = text.substr(0, length);
  // The header of the next member follows at once.
  if (text.ends_with("PK")) text.remove_suffix(2);
  return FormatOfMediaType(nullptr, text, false);
}

}  // namespace fi
