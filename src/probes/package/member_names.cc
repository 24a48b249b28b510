// Of the tables, a row stands for a format whose publisher or community describes it; whatever
// other packages may hold as well ("manifest.json", "document.xml") needs a second name or a word
// of the member's text.

#include "probes/package/member_names.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "platform/io.h"
#include "registry/format_ids.h"
#include "stream/id_stream.h"
#include "stream/package_member.h"

namespace fi {
namespace {

// All that is given must hold: the member with the text in its first bytes, and the other members.
struct MemberRule {
  FormatId id;
  std::string_view member;
  std::string_view text;
  std::string_view other;
  std::string_view third;
};

// The first that fits decides.
constexpr MemberRule kMemberRules[] = {
    // Applications and extensions: developer.android.com, the manual of AIR, learn.microsoft.com
    // (VSIX, MSIX), wiki.mozilla.org/Add-ons/Extension_Signing, OpenOffice's Developer's Guide.
    {kFormatAndroidPackage, "AndroidManifest.xml", "", "classes.dex", ""},
    {kFormatAndroidPackage, "AndroidManifest.xml", "", "resources.arsc", ""},
    {kFormatAndroidLibrary, "AndroidManifest.xml", "", "classes.jar", ""},
    {kFormatAndroidPackage, "AndroidManifest.xml", {"\x03\0\x08\0", 4}, "", ""},  // compiled
    {kFormatAndroidAppBundle, "BundleConfig.pb", "", "", ""},
    {kFormatAirApplication, "META-INF/AIR/application.xml", "", "", ""},
    {kFormatVisualStudioExtension, "extension.vsixmanifest", "", "", ""},
    {kFormatWindowsAppBundle, "AppxMetadata/AppxBundleManifest.xml", "", "", ""},
    {kFormatWindowsAppPackage, "AppxManifest.xml", "", "", ""},
    {kFormatMozillaExtension, "install.rdf", "mozilla.org/2004/em-rdf", "", ""},
    {kFormatMozillaExtension, "manifest.json", "", "META-INF/mozilla.rsa", ""},
    {kFormatOpenOfficeExtension, "description.xml", "openoffice.org/extensions/description", "",
     ""},
    // help.keyman.com, "Package Metadata files": the older of the two is being given up.
    {kFormatKeymanPackage, "kmp.json", "keymanDeveloperVersion", "", ""},
    {kFormatKeymanPackage, "kmp.json", "", "kmp.inf", ""},

    // Packages of the Open Packaging Conventions that no relationship tells: DWFx by its container
    // signature in PRONOM, ECMA-388, mathworks.com, what users have written about PBIX files. Apps
    // of MATLAB have a "matlab/document.xml" as well, but no output.
    {kFormatDwfX, "DWFDocumentSequence.dwfseq", "", "", ""},
    {kFormatOpenXps, "FixedDocumentSequence.fdseq", "openxps.org/oxps/", "", ""},
    {kFormatSimulinkModel, "simulink/blockdiagram.xml", "", "[Content_Types].xml", ""},
    {kFormatMatlabLiveScript, "matlab/document.xml", "", "[Content_Types].xml",
     "matlab/output.xml"},
    {kFormatPowerBiReport, "Report/Layout", "", "[Content_Types].xml", ""},

    // Books, scores and fixed layout: EPUB's OCF, musicxml.com, musescore.org, GB/T 33190.
    {kFormatEpub, "META-INF/container.xml", "application/oebps-package+xml", "", ""},
    {kFormatMuseScore, "META-INF/container.xml", ".mscx\"", "", ""},
    {kFormatCompressedMusicXml, "META-INF/container.xml", "application/vnd.recordare.musicxml", "",
     ""},
    {kFormatCompressedMusicXml, "META-INF/container.xml", ".musicxml\"", "", ""},
    {kFormatOfdDocument, "OFD.xml", "ofdspec.org", "", ""},

    // Maps, drawings and models: OGC 12-007 (KML), XMind's file format in the wiki of its source,
    // developer.sketch.com/file-format, wiki.freecad.org/File_Format_FCStd, wiki.geogebra.org,
    // en.scratch-wiki.info/wiki/Scratch_File_Format, dotlottie.io/structure.
    {kFormatKmz, "doc.kml", "", "", ""},
    {kFormatXMindMap, "content.xml", "urn:xmind:xmap:xmlns:content", "", ""},
    {kFormatXMindMap, "content.json", "\"rootTopic\"", "metadata.json", ""},
    {kFormatSketchDocument, "document.json", "", "meta.json", "user.json"},
    {kFormatFreeCadDocument, "Document.xml", "FreeCAD", "", ""},
    {kFormatGeoGebra, "geogebra.xml", "geogebra", "", ""},
    {kFormatScratchProject, "project.json", "\"isStage\"", "", ""},
    {kFormatDotLottie, "manifest.json", "\"animations\"", "", ""},

    // Data: eCH-0165, specs.webrecorder.net/wacz, keras.io (saving), notes of the community on
    // Anki's APKG, IMS Content Packaging; EndNote, Serif and ISDOC by their container signatures
    // in PRONOM.
    {kFormatSiard, "header/metadata.xml", "/xmlns/siard/", "", ""},
    {kFormatWacz, "datapackage.json", "", "pages/pages.jsonl", ""},
    {kFormatKerasModel, "model.weights.h5", "", "config.json", "metadata.json"},
    {kFormatAnkiPackage, "collection.anki2", "", "media", ""},
    {kFormatAnkiPackage, "collection.anki21b", "", "", ""},
    {kFormatImsContentPackage, "imsmanifest.xml", "<manifest", "", ""},
    {kFormatEndNoteLibrary, "rdb/refs.frm", "", "rdb/refs.MYD", ""},
    {kFormatSerifPackage, "summary.xml", "SerifXML", "Root.xml", ""},
    {kFormatIsdocx, "manifest.xml", "isdoc.cz/namespace", "", ""},
};

constexpr MemberRule kCutDocuments[] = {
    {kFormatWordXmlMacroDocument2007, "word/document.xml", "", "word/vbaProject.bin", ""},
    {kFormatWordXmlDocument2007, "word/document.xml", "", "", ""},
    {kFormatExcelXmlMacroWorkbook2007, "xl/workbook.xml", "", "xl/vbaProject.bin", ""},
    {kFormatExcelXmlWorkbook2007, "xl/workbook.xml", "", "", ""},
    {kFormatExcelXmlWorkbook2007, "xl/worksheets/sheet1.xml", "", "", ""},
    {kFormatExcelBinaryWorkbook2007, "xl/workbook.bin", "", "", ""},
    {kFormatExcelBinaryWorkbook2007, "xl/worksheets/sheet1.bin", "", "", ""},
    {kFormatPowerPointXmlMacroPresentation2007, "ppt/presentation.xml", "", "ppt/vbaProject.bin",
     ""},
    {kFormatPowerPointXmlPresentation2007, "ppt/presentation.xml", "", "", ""},
    {kFormatPowerPointXmlPresentation2007, "ppt/slides/slide1.xml", "", "", ""},
    {kFormatVisioXmlDrawing2013, "visio/document.xml", "", "", ""},
    {kFormatXps, "FixedDocSeq.fdseq", "schemas.microsoft.com/xps/2005/06", "", ""},
    {kFormatXps, "FixedDocumentSequence.fdseq", "schemas.microsoft.com/xps/2005/06", "", ""},
};

// Bytes of a member in which its text is looked for.
constexpr uint32_t kTextBytes = 2048;

// Which members count: all, the members outside of folders, or the first member if it is outside.
enum class Place : uint8_t { kAnywhere, kInRoot, kFirst };

struct NameRule {
  FormatId id;
  Place place;
  std::string_view prefix;
  std::string_view middle;
  std::string_view suffix;
  std::string_view sibling;  // a member whose name has this in place of the suffix
};

// OGC 12-007, openusd.org (USDZ), learn.microsoft.com (NuGet), musescore.org, help.tableau.com,
// docs.qgis.org (appendix on file formats), the developer's notes of PSPP (SPV), eCH-0165, the
// serialization notes of PyTorch, PEP 427.
constexpr NameRule kNameRules[] = {
    {kFormatKmz, Place::kFirst, "", "", ".kml", ""},
    {kFormatUsdz, Place::kFirst, "", "", ".usdc", ""},
    {kFormatUsdz, Place::kFirst, "", "", ".usda", ""},
    {kFormatUsdz, Place::kFirst, "", "", ".usd", ""},
    {kFormatMuseScore, Place::kInRoot, "", "", ".mscx", ""},
    {kFormatTableauWorkbook, Place::kInRoot, "", "", ".twb", ""},
    {kFormatQgisProject, Place::kInRoot, "", "", ".qgs", ""},
    {kFormatIosApplication, Place::kAnywhere, "Payload/", ".app/", "", ""},
    {kFormatSpssViewer, Place::kInRoot, "outputViewer0", "", ".xml", ""},
    {kFormatSiard, Place::kAnywhere, "header/siardversion/", "", "/", ""},
    {kFormatPyTorchModel, Place::kAnywhere, "", "", "/data.pkl", "/version"},
    {kFormatPyTorchModel, Place::kAnywhere, "", "", "/data.pkl", "/byteorder"},
    {kFormatPythonWheel, Place::kAnywhere, "", "", ".dist-info/WHEEL", ".dist-info/METADATA"},
};

// Names examined at most. The deciding members stand among the first or, as WHEEL, the last; the
// rest of a larger package is not examined.
constexpr uint32_t kMostNames = 4096;

// Look-ups of siblings, each a walk of the directory. A package with a sibling has it beside the
// first member of the kind.
constexpr uint32_t kMostSiblings = 16;

bool HasText(IOHandle* member, std::string_view text) {
  char buffer[kTextBytes];
  return ReadHead(member, buffer).find(text) != std::string_view::npos;
}

bool Fits(IOHandle* package, const MemberRule& rule) {
  const io::OwnedHandle member = OpenMember(package, rule.member);
  if (member == nullptr) return false;
  if (!rule.other.empty() && !HasMember(package, rule.other)) return false;
  if (!rule.third.empty() && !HasMember(package, rule.third)) return false;
  return rule.text.empty() || HasText(member.get(), rule.text);
}

// The name with its suffix replaced is a member.
bool HasSibling(IOHandle* package, std::string_view name, const NameRule& rule) {
  std::array<char, kIoMemberPathCapacity> path;
  const size_t stem = name.size() - rule.suffix.size();
  if (stem > path.size() || rule.sibling.size() > path.size() - stem) return false;
  name.copy(path.data(), stem);
  rule.sibling.copy(path.data() + stem, rule.sibling.size());
  return HasMember(package, {path.data(), stem + rule.sibling.size()});
}

bool Fits(IOHandle* package, std::string_view name, bool isFirst, const NameRule& rule,
          uint32_t* siblings) {
  if (rule.place == Place::kFirst && !isFirst) return false;
  if (rule.place != Place::kAnywhere && name.find('/') != std::string_view::npos) return false;
  if (!name.starts_with(rule.prefix) || !name.ends_with(rule.suffix)) return false;
  if (name.size() <= rule.prefix.size() + rule.suffix.size()) return false;
  if (name.find(rule.middle, rule.prefix.size()) == std::string_view::npos) return false;
  if (rule.sibling.empty()) return true;
  if (*siblings == kMostSiblings) return false;
  ++*siblings;
  return HasSibling(package, name, rule);
}

template <size_t count>
FormatId FirstThatFits(IOHandle* package, const MemberRule (&rules)[count]) {
  for (const MemberRule& rule : rules) {
    if (Fits(package, rule)) return rule.id;
  }
  return kNoMatch;
}

// A package of NuGet follows the conventions of OPC, where any ZIP may hold a specification.
FormatId FormatOfSpecification(IOHandle* package) {
  return HasMember(package, "[Content_Types].xml") ? kFormatNuGetPackage : kNoMatch;
}

}  // namespace

FormatId FormatOfMembers(IOHandle* package) { return FirstThatFits(package, kMemberRules); }

FormatId FormatOfCutDocument(IOHandle* package) { return FirstThatFits(package, kCutDocuments); }

FormatId FormatOfNames(IOHandle* package) {
  bool onlyArrays = true;
  IOMemberName member = {0, nullptr};
  uint32_t index = 0;
  uint32_t siblings = 0;
  for (; index < kMostNames; ++index) {
    member.index = index;
    if (!io::GetInfo(package, kIoInfoMemberName, &member) || member.name == nullptr) break;
    const std::string_view name = member.name;
    onlyArrays = onlyArrays && name.ends_with(".npy");
    if (name.ends_with(".nuspec") && name.find('/') == std::string_view::npos) {
      if (const FormatId id = FormatOfSpecification(package); id != kNoMatch) return id;
    }
    for (const NameRule& rule : kNameRules) {
      if (Fits(package, name, index == 0, rule, &siblings)) return rule.id;
    }
  }
  return index > 0 && onlyArrays ? kFormatNumPyArchive : kNoMatch;
}

FormatId FormatOfJavaArchive(IOHandle* package) {
  if (HasMember(package, "[Content_Types].xml")) return kNoMatch;
  const io::OwnedHandle manifest = OpenMember(package, "META-INF/MANIFEST.MF");
  if (manifest == nullptr || !HasText(manifest.get(), "Manifest-Version:")) return kNoMatch;
  return kFormatJavaArchive;
}

}  // namespace fi
