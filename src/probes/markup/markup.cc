#include "probes/markup/markup.h"

#include <string_view>

#include "probes/markup/document_root.h"
#include "probes/markup/html_tags.h"
#include "registry/format_ids.h"
#include "stream/first_byte.h"
#include "stream/text_view.h"

namespace fi {
namespace {

constexpr uint32_t kMaxPrologue = 64 * 1024;  // characters up to the end of the root's tag

struct Vocabulary {
  std::string_view root;  // local name; empty: any
  std::string_view space;
  FormatId id;
};

constexpr Vocabulary kVocabularies[] = {
    {"svg", "http://www.w3.org/2000/svg", kFormatSvg},
    {"html", "http://www.w3.org/1999/xhtml", kFormatHtml},
    {"html", "", kFormatHtml},
    {"wordDocument", "http://schemas.microsoft.com/office/word/2003/wordml", kFormatWordMl2003},
    {"Workbook", "urn:schemas-microsoft-com:office:spreadsheet", kFormatSpreadsheetMl2003},
    {"FictionBook", "http://www.gribuser.ru/xml/fictionbook/2.0", kFormatFictionBook},
    {"VisioDocument", "http://schemas.microsoft.com/visio/2003/core", kFormatVisio2003Xml},
    {"", "http://www.lotus.com/dxl", kFormatDominoXml},
};

constexpr std::string_view kSvgDoctype = "-//W3C//DTD SVG";

FormatId VocabularyOf(const DocumentRoot& document) {
  if (!document.found()) return kNoMatch;
  const std::string_view root = document.LocalName();
  const std::string_view space = document.Namespace();
  for (const Vocabulary& row : kVocabularies) {
    if (row.space == space && (row.root.empty() || row.root == root)) return row.id;
  }
  // Drawings may spell their namespace as an entity that their document type declares.
  if (root == "svg" && document.Doctype().find(kSvgDoctype) != std::string_view::npos) {
    return kFormatSvg;
  }
  return kNoMatch;
}

// "html", "html PUBLIC ...", and the type of the bookmark files that browsers exchange.
bool IsHtmlDoctype(std::string_view doctype) {
  const size_t end = doctype.find_first_of(" \t\r\n");
  const std::string_view name = doctype.substr(0, end);
  return EqualsNoCase(name, "html") || EqualsNoCase(name, "netscape-bookmark-file-1");
}

// The form of text without a mark that may begin with markup; false where it cannot.
bool MayBeMarkup(IdentificationStream* stream, TextForm* form) {
  const uint32_t first = FirstByte(stream);
  if (first != '<' && first != 0 && !IsMarkupSpace(first)) return false;
  const uint32_t second = IdStreamGetByte(stream);
  if (first == 0) {
    form->units = TextUnits::kWordsBE;
    return second == '<';
  }
  if (second == 0) form->units = TextUnits::kWordsLE;
  return second != 0 || first == '<';
}

}  // namespace

FormatId IdentifyMarkup(IdentificationStream* stream, const TextForm& form) {
  const DocumentRoot document(stream, form, kMaxPrologue);
  if (document.isBinary()) return kNoMatch;
  if (document.isXml() && document.isForm()) return kFormatInfoPathForm;
  if (const FormatId id = VocabularyOf(document); id != kNoMatch) return id;
  if (!document.Doctype().empty()) {
    if (IsHtmlDoctype(document.Doctype())) return kFormatHtml;
    return document.isXml() ? kFormatXml : kNoMatch;
  }
  if (document.isXml()) return kFormatXml;
  if (BeginsHtml(document.Name())) {
    return HasHtmlTags(stream, form) ? kFormatHtml : kNoMatch;
  }
  // The declaration may be left out; namespaces are known to XML only.
  return document.DeclaresNamespace() ? kFormatXml : kNoMatch;
}

FormatId MarkupProbe(IdentificationStream* stream) {
  TextForm form;
  return MayBeMarkup(stream, &form) ? IdentifyMarkup(stream, form) : kNoMatch;
}

}  // namespace fi
