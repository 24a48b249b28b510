// Tags of XML as programs write it: UTF-8, elements in elements, attributes without line breaks.
// The scanner accepts only text that it can check to be well-formed with namespaces, and leaves the
// rest (comments, processing instructions, document types, faults) to a full parser. Its results
// equal those of the full parser.
#ifndef FI_TOOLKIT_XML_PLAIN_SCANNER_H_
#define FI_TOOLKIT_XML_PLAIN_SCANNER_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace fi::xml {

class PlainScanner {
 public:
  // kMore: the document goes on beyond what was given. kOther: here begins what is not plain, or
  // what goes beyond kMaxPlainItems.
  enum class Step { kDone, kEndOfData, kMore, kOther };

  // The document so far, or whole, which only grows; a NUL stands behind it. It may lie elsewhere
  // each time: views that are handed out point into the last one.
  void SetDocument(std::string_view document, bool isWhole) {
    document_ = document;
    isWhole_ = isWhole;
  }

  // Goes to the next tag: kDone. At all others there is no current tag. REQUIRES: SetDocument.
  Step NextTag();

  // The first kMaxContent bytes of the character data between the current tag and the next, if the
  // data needs no decoding. Never kEndOfData.
  Step Text(std::string_view* text) const;

  // Of the current tag.
  bool isEnd() const { return isEnd_; }
  std::string_view namespaceUri() const { return View(tag_.uri); }
  std::string_view localName() const { return View(LocalRange(tag_.name)); }
  // As it is written: there may be references in it, to characters and the five built-in entities.
  std::optional<std::string_view> Attribute(std::string_view localName) const;

  // The tag as it is written; values of attributes are part of it, with a quote behind each.
  std::string_view TagText() const { return View(text_); }

 private:
  struct Range {
    uint32_t at;
    uint32_t size;
  };
  struct Name {
    Range whole;
    uint32_t prefixSize;  // 0: there is none
  };
  struct Element {
    Name name;
    Range uri;
    uint32_t bindings;  // in force around it
  };
  struct Binding {
    Range prefix;  // empty: the default namespace
    Range uri;
  };
  struct AttributeEntry {
    Name name;
    Range value;
  };
  class Cursor;

  // What programs write stays below; beyond, a document counts as not plain.
  static constexpr size_t kMaxDepth = 64;
  static constexpr size_t kMaxBindings = 64;
  static constexpr size_t kMaxAttributes = 32;

  std::string_view View(Range range) const { return document_.substr(range.at, range.size); }
  std::string_view Prefix(const Name& name) const {
    return View(name.whole).substr(0, name.prefixSize);
  }
  static Range LocalRange(const Name& name) {
    const uint32_t at = name.prefixSize == 0 ? 0 : name.prefixSize + 1;
    return {name.whole.at + at, name.whole.size - at};
  }

  bool insideRoot() const { return depth_ > 0; }
  Cursor CursorAt(size_t at) const;
  Step Stop(const Cursor& cursor) const;
  Range RangeTo(const char* begin, const char* end) const;
  bool TakeName(Cursor* cursor, Name* name) const;
  bool TakeAttribute(Cursor* cursor);
  bool TakeEndTag(Cursor* cursor);
  bool TakeStartTag(Cursor* cursor);
  bool Declare(Range prefix, Range uri);
  bool Resolve(Element* element) const;
  const Binding* FindBinding(std::string_view prefix) const;
  void Leave();

  std::string_view document_;
  bool isWhole_ = false;
  size_t at_ = 0;       // behind the current tag
  uint32_t items_ = 0;  // up to there, as kMaxPlainItems counts them
  bool isEnd_ = true;
  bool endFollows_ = false;  // an element without content: its end is the next tag
  Range text_{};
  Element tag_{};

  // Depth, bindings and attributes of the open elements and of the current tag.
  size_t depth_ = 0;
  uint32_t bindingCount_ = 0;
  uint32_t attributeCount_ = 0;
  std::array<Element, kMaxDepth> elements_;
  std::array<Binding, kMaxBindings> bindings_;
  std::array<AttributeEntry, kMaxAttributes> attributes_;
};

}  // namespace fi::xml

#endif  // FI_TOOLKIT_XML_PLAIN_SCANNER_H_
