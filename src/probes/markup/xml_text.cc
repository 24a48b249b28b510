#include "probes/markup/xml_text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string_view>

#include "formatid/io.h"
#include "platform/work.h"
#include "platform/xml.h"
#include "probes/markup/document_root.h"
#include "probes/markup/html_tags.h"
#include "registry/format_ids.h"
#include "stream/text_view.h"

namespace fi {
namespace {

// Elements of HTML that fragments and templates begin with, beside those of BeginsHtml. Left out
// are those whose names are common for roots of other vocabularies, such as "data" and "menu".
constexpr std::string_view kHtml[] = {
    "abbr",     "address", "article",  "aside",    "audio",  "blockquote", "button", "canvas",
    "caption",  "cite",    "code",     "dd",       "del",    "details",    "dialog", "dl",
    "dt",       "em",      "fieldset", "figure",   "footer", "frame",      "h5",     "h6",
    "header",   "iframe",  "input",    "ins",      "kbd",    "label",      "legend", "li",
    "main",     "mark",    "nav",      "noscript", "option", "picture",    "q",      "s",
    "samp",     "section", "select",   "small",    "source", "strike",     "strong", "sub",
    "summary",  "sup",     "tbody",    "td",       "th",     "thead",      "tr",     "tt",
    "template", "tfoot",   "textarea", "time",     "u",      "var",        "video",  "wbr"};

// What languages for templates and pages that run on servers put between elements.
constexpr std::string_view kTemplateMarks[] = {"{{", "{%", "<?php"};

// Tags of HTML inside the custom elements of pages, whose names have a hyphen. Elements of other
// vocabularies do not hold them.
constexpr std::string_view kPageTags[] = {"<div",   "<span", "<button",
                                          "<input", "<img",  "<template"};

// What proves a document that the window cuts.
constexpr uint32_t kMinElements = 3;
constexpr uint32_t kMinDepth = 2;

// Blanks behind a window that cuts a document. They outnumber a piece of the reader, so the reader
// meets a fault in the window before the end of the data.
constexpr size_t kMargin = 8192;

// A handle on text, which can only be read through.
class TextHandle : public IOHandle {
 public:
  TextHandle(std::string_view text, size_t blanks) : IOHandle{}, text_(text), blanks_(blanks) {
    operations = &kOperations;
  }

  // Whether the reader has met the end.
  bool ended() const { return ended_; }

 private:
  static int32_t Read(IOHandle* handle, void* buffer, uint32_t size, uint32_t* count) noexcept {
    auto& self = *static_cast<TextHandle*>(handle);
    const size_t text = std::min<size_t>(size, self.text_.size());
    const size_t blanks = std::min(size - text, self.blanks_);
    std::memcpy(buffer, self.text_.data(), text);
    std::memset(static_cast<char*>(buffer) + text, ' ', blanks);
    self.text_.remove_prefix(text);
    self.blanks_ -= blanks;
    *count = static_cast<uint32_t>(text + blanks);
    self.ended_ = self.ended_ || *count < size;
    return 0;
  }
  // The handle is never closed, and nothing but its data is asked for.
  static int32_t Close(IOHandle*) noexcept { return 0; }
  static int32_t Seek(IOHandle*, uint32_t, int32_t) noexcept { return -1; }
  static int32_t Tell(IOHandle*, uint32_t*) noexcept { return -1; }
  static int32_t GetInfo(IOHandle*, uint32_t, void*) noexcept { return -1; }
  static int32_t Open(IOHandle*, IOHandle**, uint32_t, const void*, uint32_t) noexcept {
    return kIoError;
  }

  static constexpr IOHandleOperations kOperations = {Close,   Read, nullptr, Seek,   Tell,
                                                     GetInfo, Open, nullptr, nullptr};

  std::string_view text_;
  size_t blanks_;
  bool ended_ = false;
};

// Names of HTML are written in one case; one with a capital at its start only is of another
// vocabulary.
bool IsHtmlName(std::string_view name) {
  const bool isCapital = name.size() > 1 && IsUpper(name[0]) && !IsUpper(name[1]);
  if (isCapital) return false;
  return BeginsHtml(name) ||
         std::any_of(std::begin(kHtml), std::end(kHtml),
                     [name](std::string_view html) { return EqualsNoCase(name, html); });
}

template <size_t kCount>
bool HoldsAny(std::string_view text, const std::string_view (&words)[kCount]) {
  return std::any_of(std::begin(words), std::end(words), [text](std::string_view word) {
    return text.find(word) != std::string_view::npos;
  });
}

// Cuts `text` behind its last word, or the last tag, so that it does not end inside a character or
// a name.
std::string_view WholeWords(std::string_view text) {
  while (!text.empty() && !IsWhiteSpace(text.back()) && text.back() != '>') text.remove_suffix(1);
  return text;
}

// The text has no handle that could tell the identification.
bool NoMemory(Work* work) {
  if (work != nullptr) work->noMemory = true;
  return false;
}

bool IsWellFormed(std::string_view text, bool isCut, Work* work) {
  TextHandle handle(isCut ? WholeWords(text) : text, isCut ? kMargin : 0);
  xml::ScopedReader reader(&handle);
  if (!reader) return NoMemory(work);
  uint32_t elements = 0;
  uint32_t depth = 0;
  uint32_t greatestDepth = 0;
  int32_t result = kXmlOk;
  while (result == kXmlOk || result == kXmlNoElement) {
    UTXMLTag tag{};
    result = UTXMLReadNextTag(reader.get(), &tag, nullptr);
    if (result != kXmlOk) continue;
    if ((tag.flags & kXmlEndTag) != 0) {
      --depth;
    } else {
      ++elements;
      greatestDepth = std::max(greatestDepth, ++depth);
    }
  }
  if (result == kXmlFailure) return NoMemory(work);
  if (!isCut) return result == kXmlEndOfData;
  // The document goes on, so that its end cannot be sound.
  return handle.ended() && elements >= kMinElements && greatestDepth >= kMinDepth;
}

}  // namespace

FormatId XmlTextProbe(IdentificationStream* stream, const TextHead& window) {
  // Blanks before a declaration are a fault, but a frequent one.
  const std::string_view text = SkipSpace(window.View());
  if (!text.starts_with('<')) return kNoMatch;
  const DocumentRoot document(stream, window.form(), TextHead::kCapacity);
  if (!document.found()) return kNoMatch;
  const std::string_view root = document.Name();
  if (document.Doctype().empty() && IsHtmlName(root)) return kNoMatch;
  if (HoldsAny(text, kTemplateMarks)) return kNoMatch;
  if (root.find('-') != std::string_view::npos && HoldsAny(text, kPageTags)) return kNoMatch;
  if (!IsWellFormed(text, window.isCut(), stream->job->work)) return kNoMatch;
  return root == "svg" ? kFormatSvg : kFormatXml;
}

}  // namespace fi
