#include "properties/pdf/pdf.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <string_view>

#include "platform/pdf_password.h"
#include "properties/pdf/pdf_file.h"
#include "properties/pdf/pdf_syntax.h"
#include "properties/record/short_text.h"

namespace fi {
namespace {

using pdf::Entry;
using pdf::Integer;
using pdf::PdfFile;

// "1.7" of "1.7\r\n"; empty when there is none.
std::string_view VersionNumber(std::string_view text) {
  size_t length = 0;
  while (length < text.size() && length < 4 &&
         ((text[length] >= '0' && text[length] <= '9') || text[length] == '.')) {
    ++length;
  }
  const std::string_view version = text.substr(0, length);
  return version.size() >= 3 && version[1] == '.' ? version : std::string_view();
}

// The catalogue may raise the version that the header tells.
void ReadVersion(const PdfFile& file, std::string_view catalogue, PropertySet& out) {
  const std::string_view header =
      VersionNumber(file.head().substr(std::min<size_t>(5, file.head().size())));
  const std::string_view entry = Entry(catalogue, "Version");
  const std::string_view raised = entry.starts_with('/') ? VersionNumber(entry.substr(1)) : entry;
  if (raised > header && !VersionNumber(raised).empty()) {
    out.Set(Property::kVersion, raised, "catalogue");
  } else {
    out.Set(Property::kVersion, header, "header", file.headerOffset());
  }
}

// The text behind `name` in XMP, as an element or an attribute; empty when it is not there.
std::string_view XmpValue(std::string_view xmp, std::string_view name) {
  for (size_t at = xmp.find(name); at != std::string_view::npos; at = xmp.find(name, at + 1)) {
    std::string_view rest = xmp.substr(at + name.size());
    const bool isElement = rest.starts_with('>');
    const bool isAttribute = rest.starts_with("=\"") || rest.starts_with("='");
    if (!isElement && !isAttribute) continue;
    const char end = isElement ? '<' : rest[1];
    rest.remove_prefix(isElement ? 1 : 2);
    const size_t length = rest.find(end);
    constexpr size_t kMost = 32;
    if (length != std::string_view::npos && length <= kMost) return rest.substr(0, length);
  }
  return {};
}

void AddProfile(std::string_view name, ShortText& profiles) {
  if (!profiles.view().empty()) profiles.Append(", ");
  profiles.Append(name);
}

// PDF/A (ISO 19005), PDF/UA (ISO 14289) and PDF/X (ISO 15930) identify themselves in the metadata,
// PDF/X up to the third part in the document information too.
void ReadProfiles(PdfFile& file, std::optional<uint32_t> metadata, PropertySet& out) {
  ShortText profiles;
  if (metadata.has_value()) {
    const std::string_view xmp = file.StreamOf(*metadata);
    if (const std::string_view part = XmpValue(xmp, "pdfaid:part"); !part.empty()) {
      ShortText name("PDF/A-");
      name.Append(part);
      name.AppendLower(XmpValue(xmp, "pdfaid:conformance"));
      AddProfile(name.view(), profiles);
    }
    if (const std::string_view part = XmpValue(xmp, "pdfuaid:part"); !part.empty()) {
      ShortText name("PDF/UA-");
      name.Append(part);
      AddProfile(name.view(), profiles);
    }
    std::string_view x = XmpValue(xmp, "pdfxid:GTS_PDFXVersion");
    if (x.empty()) x = XmpValue(xmp, "pdfx:GTS_PDFXVersion");
    if (x.starts_with("PDF/X")) AddProfile(x, profiles);
  }
  if (profiles.view().find("PDF/X") == std::string_view::npos) {
    std::array<uint8_t, 32> bytes;
    const std::string_view information = file.Resolve(Entry(file.trailer(), "Info"));
    const size_t size = pdf::DecodeString(Entry(information, "GTS_PDFXVersion"), bytes);
    const std::string_view x(reinterpret_cast<const char*>(bytes.data()), size);
    if (x.starts_with("PDF/X")) AddProfile(x, profiles);
  }
  out.Set(Property::kProfile, profiles.view(), "metadata");
}

// What the permission bits withhold from whoever opens the file without the owner's password.
void ReadPermissions(int64_t permissions, PropertySet& out) {
  constexpr struct {
    int bit;  // counted from 1, as in the table of the standard
    std::string_view name;
  } kBits[] = {{3, "print"},    {4, "modify"}, {5, "copy"},
               {6, "annotate"}, {9, "forms"},  {11, "assemble"}};
  ShortText withheld;
  for (const auto& bit : kBits) {
    if ((static_cast<uint64_t>(permissions) >> (bit.bit - 1) & 1) != 0) continue;
    withheld.Append(withheld.view().empty() ? "no " : ", no ");
    withheld.Append(bit.name);
  }
  out.Set(Property::kPermissions, withheld.view(), "Encrypt");
}

std::string_view NameOfScheme(std::string_view dictionary, int64_t version, int64_t length,
                              ShortText& text) {
  const std::string_view filter = Entry(dictionary, "StmF");
  const std::string_view filters = Entry(dictionary, "CF");
  const std::string_view method =
      Entry(Entry(filters, filter.empty() ? filter : filter.substr(1)), "CFM");
  if (method == "/AESV2") return "AES-128";
  if (method == "/AESV3") return "AES-256";
  if (version == 5) return "AES-256";
  if (version != 1 && version != 2 && version != 4) return {};
  text.Append("RC4 ");
  text.AppendNumber(static_cast<uint64_t>(version == 1 ? 40 : version == 4 ? 128 : length));
  text.Append("-bit");
  return text.view();
}

PdfEncryption Encryption(PdfFile& file, std::string_view dictionary, int64_t length) {
  PdfEncryption e;
  e.revision = Integer(Entry(dictionary, "R")).value_or(0);
  e.length = length;
  e.permissions = Integer(Entry(dictionary, "P")).value_or(0);
  e.encryptsMetadata = Entry(dictionary, "EncryptMetadata") != "false";
  e.ownerSize = pdf::DecodeString(Entry(dictionary, "O"), e.owner);
  e.userSize = pdf::DecodeString(Entry(dictionary, "U"), e.user);
  e.fileIdSize = pdf::DecodeString(pdf::Element(Entry(file.trailer(), "ID"), 0), e.fileId);
  return e;
}

void ReadEncryption(PdfFile& file, PropertySet& out) {
  constexpr std::string_view kPlace = "Encrypt";
  const std::string_view entry = Entry(file.trailer(), "Encrypt");
  if (entry.empty()) {
    if (!file.trailer().empty()) out.Set(Property::kEncryption, "none", "trailer");
    return;
  }
  const std::string_view dictionary = file.Resolve(entry);
  const std::string_view handler = Entry(dictionary, "Filter");
  if (handler.size() < 2) return;
  const int64_t version = Integer(Entry(dictionary, "V")).value_or(0);
  const int64_t length = version >= 4 ? 128 : Integer(Entry(dictionary, "Length")).value_or(40);
  if (handler == "/Adobe.PubSec") {
    out.Set(Property::kEncryption, "certificate", kPlace);
  } else if (handler != "/Standard") {
    out.Set(Property::kEncryption, "rights", kPlace);
    out.Set(Property::kEncryptionScheme, handler.substr(1), kPlace);
    return;
  }
  ShortText scheme;
  out.Set(Property::kEncryptionScheme, NameOfScheme(dictionary, version, length, scheme), kPlace);
  if (handler != "/Standard") return;
  ReadPermissions(Integer(Entry(dictionary, "P")).value_or(-1), out);
  switch (HowPdfOpens(Encryption(file, dictionary, length))) {
    case PdfOpening::kWithoutPassword:
      out.Set(Property::kEncryption, "restricted", kPlace);
      break;
    case PdfOpening::kWithPassword:
      out.Set(Property::kEncryption, "password", kPlace);
      break;
    case PdfOpening::kUnknown:
      break;
  }
}

// A signature field that has a value. Fields may be kids of others; two levels serve all writers
// met.
bool HasSignature(PdfFile& file, uint32_t form) {
  constexpr size_t kMaxFields = 32;
  // Each look-up ends the life of the text of the one before it.
  for (size_t i = 0; i < kMaxFields; ++i) {
    const auto field = [&] {
      return file.Resolve(pdf::Element(file.Resolve(Entry(file.Object(form), "Fields")), i));
    };
    const std::string_view text = field();
    if (text.empty()) return false;
    if (Entry(text, "FT") != "/Sig") continue;
    if (!Entry(text, "V").empty()) return true;
    const std::string_view kid = file.Resolve(pdf::Element(Entry(field(), "Kids"), 0));
    if (!Entry(kid, "V").empty()) return true;
  }
  return false;
}

void ReadSignature(PdfFile& file, uint32_t root, PropertySet& out) {
  const std::string_view form = Entry(file.Object(root), "AcroForm");
  if (form.empty()) return;
  const std::optional<uint32_t> number = pdf::Reference(form);
  const std::string_view dictionary = file.Resolve(form);
  constexpr int64_t kSignaturesExist = 1;
  if ((Integer(Entry(dictionary, "SigFlags")).value_or(0) & kSignaturesExist) == 0) return;
  if (!number.has_value() || HasSignature(file, *number)) {
    out.Set(Property::kSigned, "yes", "AcroForm");
  }
}

// The first object of a linearized file has the length of the file. An appended update makes the
// length wrong and the file an ordinary PDF.
void ReadLinearization(const PdfFile& file, PropertySet& out) {
  const size_t at = file.head().find("/Linearized");
  if (at == std::string_view::npos) return;
  const size_t begin = file.head().rfind("<<", at);
  if (begin == std::string_view::npos) return;
  const std::string_view dictionary = file.head().substr(begin);
  if (Integer(Entry(dictionary, "L")) != file.size()) return;
  out.Set(Property::kLinearized, "yes", "header",
          file.headerOffset() + static_cast<int64_t>(begin));
}

void ReadEnd(const PdfFile& file, PropertySet& out) {
  if (file.trailingBytes() < 0) {
    out.Set(Property::kDamaged, "end-of-file mark", "tail");
  } else if (file.trailingBytes() > 0) {
    out.SetNumber(Property::kTrailingBytes, static_cast<uint64_t>(file.trailingBytes()), "tail",
                  file.size() - file.trailingBytes());
  }
  if (!file.hasStartXref()) {
    out.Set(Property::kDamaged, "startxref", "tail");
  } else if (file.trailer().empty()) {
    out.Set(Property::kDamaged, "cross-reference section", "startxref", file.startXref());
  }
}

}  // namespace

void ReadPdfProperties(const PropertyQuestion& question, PropertySet& out) {
  const std::unique_ptr<PdfFile> file = PdfFile::Make(question.stream);
  if (file == nullptr || file->head().empty()) return;
  ReadLinearization(*file, out);
  ReadEnd(*file, out);
  ReadEncryption(*file, out);
  const std::optional<uint32_t> root = pdf::Reference(Entry(file->trailer(), "Root"));
  const std::string_view catalogue = root.has_value() ? file->Object(*root) : std::string_view();
  // In an encrypted file the catalogue may stand in an object stream that cannot be read.
  if (root.has_value() && catalogue.empty() && out.Is(Property::kEncryption, "none")) {
    out.Set(Property::kDamaged, "catalogue", "trailer");
  }
  ReadVersion(*file, catalogue, out);
  ReadProfiles(*file, pdf::Reference(Entry(catalogue, "Metadata")), out);
  if (root.has_value()) ReadSignature(*file, *root, out);
}

}  // namespace fi
