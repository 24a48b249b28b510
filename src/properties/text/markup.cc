#include "properties/text/markup.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "probes/markup/document_root.h"
#include "properties/record/short_text.h"
#include "properties/text/text.h"
#include "registry/format_ids.h"
#include "stream/text_head.h"
#include "stream/text_view.h"

namespace fi {
namespace {

// Characters up to the end of the root's start tag.
constexpr uint32_t kPrologue = 16 * 1024;

// The value of a pseudo-attribute of the XML declaration, or of an attribute further on.
std::string_view Quoted(std::string_view text, std::string_view name) {
  const size_t at = text.find(name);
  if (at == std::string_view::npos) return {};
  std::string_view rest = SkipSpace(text.substr(at + name.size()));
  if (!rest.starts_with('=')) return {};
  rest = SkipSpace(rest.substr(1));
  if (rest.empty() || (rest[0] != '"' && rest[0] != '\'')) return {};
  const size_t end = rest.find(rest[0], 1);
  return end == std::string_view::npos ? std::string_view() : rest.substr(1, end - 1);
}

std::string_view Declaration(std::string_view text) {
  text = SkipSpace(text);
  return text.starts_with("<?xml") ? text.substr(0, text.find("?>")) : std::string_view();
}

// The charset that a page declares in a meta element, up to where its name ends.
std::string_view MetaCharset(std::string_view text) {
  constexpr std::string_view kName = "charset=";
  for (size_t at = 0; at + kName.size() < text.size(); ++at) {
    if (!StartsWithNoCase(text.substr(at), kName)) continue;
    std::string_view rest = text.substr(at + kName.size());
    if (rest.starts_with('"') || rest.starts_with('\'')) rest.remove_prefix(1);
    return rest.substr(0, rest.find_first_of("\"'>; \t\r\n/"));
  }
  return {};
}

// What a public identifier names; empty for one that is not of HTML.
std::string_view HtmlVersion(std::string_view doctype, ShortText& text) {
  constexpr std::string_view kPublic = "//DTD ";
  const size_t at = doctype.find(kPublic);
  if (at == std::string_view::npos) {
    const std::string_view name = TrimBlanks(doctype);
    return EqualsNoCase(name, "html") || name.find("about:legacy-compat") != std::string_view::npos
               ? "HTML 5"
               : std::string_view();
  }
  std::string_view version = doctype.substr(at + kPublic.size());
  version = version.substr(0, version.find("//"));
  text.Append(version);
  return text.view();
}

// Where bytes above ASCII leave the charset open, the document's own word counts.
void PreferDeclared(std::string_view declared, std::string_view place, PropertySet& out) {
  constexpr size_t kLongest = 32;
  if (declared.empty() || declared.size() > kLongest) return;
  const bool isOpen = out.Is(Property::kCharset, "unknown-8bit") ||
                      out.Is(Property::kCharset, "iso-8859-1") || !out.Has(Property::kCharset);
  if (!isOpen) return;
  ShortText name;
  name.AppendLower(declared);
  if (name.view() != "utf-8") out.Replace(Property::kCharset, name.view(), place);
}

}  // namespace

void ReadMarkupProperties(const PropertyQuestion& question, PropertySet& out) {
  ReadTextProperties(question, out);
  const TextHead head(question.stream);
  const DocumentRoot root(question.stream, head.form(), kPrologue);
  const std::string_view declaration = Declaration(head.View());
  if (question.id == kFormatHtml) {
    ShortText version;
    out.Set(Property::kVersion, HtmlVersion(root.Doctype(), version), "document type");
    PreferDeclared(MetaCharset(head.View()), "meta", out);
  } else if (question.id == kFormatSvg) {
    out.Set(Property::kVersion, root.Attribute("version"), "root element");
  } else {
    out.Set(Property::kVersion, Quoted(declaration, "version"), "XML declaration", 0);
  }
  PreferDeclared(Quoted(declaration, "encoding"), "XML declaration", out);
  out.Set(Property::kProfile, root.Namespace(), "root element");
}

}  // namespace fi
