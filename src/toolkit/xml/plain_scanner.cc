#include "toolkit/xml/plain_scanner.h"

#include "toolkit/xml/limits.h"

namespace fi::xml {
namespace {

// Classes of bytes. None holds the NUL, at which every run of bytes ends.
enum : uint8_t {
  kNameStart = 1,
  kNameByte = 2,
  kSpace = 4,
  kTextByte = 8,    // of character data; "]" is left out, since "]]>" is a fault there
  kValueByte = 16,  // of an attribute's value, but for quotes
};

constexpr uint8_t Byte(char c) { return static_cast<uint8_t>(c); }

constexpr auto kClasses = [] {
  std::array<uint8_t, 256> classes{};
  for (size_t byte = 0x20; byte < 0x7F; ++byte) classes[byte] = kTextByte | kValueByte;
  for (size_t byte = 'a'; byte <= 'z'; ++byte) {
    classes[byte] |= kNameStart | kNameByte;
    classes[byte - 'a' + 'A'] |= kNameStart | kNameByte;
  }
  for (size_t byte = '0'; byte <= '9'; ++byte) classes[byte] |= kNameByte;
  classes['_'] |= kNameStart | kNameByte;
  classes['-'] |= kNameByte;
  classes['.'] |= kNameByte;
  classes['<'] = classes['&'] = 0;
  classes[']'] = kValueByte;
  classes['"'] = classes['\''] = kTextByte;
  for (const char space : {'\t', '\n', '\r'}) classes[Byte(space)] = kSpace | kTextByte;
  classes[' '] |= kSpace;
  return classes;
}();

bool IsOf(char c, unsigned classes) { return (kClasses[Byte(c)] & classes) != 0; }

// The value of a decimal or hexadecimal digit, negative for none.
int DigitOf(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

// The name, and the prefix, of attributes that declare namespaces.
constexpr std::string_view kDeclaration = "xmlns";

// The prefix "xml" always stands for this namespace; a declaration may only repeat the pair.
constexpr std::string_view kXmlPrefix = "xml";
constexpr std::string_view kXmlNamespace = "http://www.w3.org/XML/1998/namespace";

// Namespaces that only the prefixes "xml" and "xmlns" may stand for begin so.
bool MayBeReserved(std::string_view uri) {
  return uri.starts_with("http://www.w3.org/XML/1998/") ||
         uri.starts_with("http://www.w3.org/2000/xmlns");
}

}  // namespace

// The place where the scanner reads. A failed Take leaves the cursor at the first byte without a
// match. The end of the document there means that more must be read; any other byte leaves the
// document to a full parser.
class PlainScanner::Cursor {
 public:
  explicit Cursor(const char* at) : at_(at) {}

  const char* at() const { return at_; }
  char Peek() const { return *at_; }

  bool Take(char expected) {
    if (*at_ != expected) return false;
    ++at_;
    return true;
  }

  bool Take(std::string_view expected) {
    for (const char c : expected) {
      if (!Take(c)) return false;
    }
    return true;
  }

  // Passes bytes of the classes; whether there was one.
  bool Skip(unsigned classes) {
    const char* const before = at_;
    while (IsOf(*at_, classes)) ++at_;
    return at_ != before;
  }

  // One character of UTF-8 beyond ASCII, if XML allows the character.
  bool TakeSequence() {
    const uint8_t lead = Byte(*at_);
    if (lead < 0xC2 || lead > 0xF4) return false;
    ++at_;
    if (lead < 0xE0) return TakeBetween(0x80, 0xBF);
    if (lead < 0xF0) {
      if (!TakeBetween(lead == 0xE0 ? 0xA0 : 0x80, lead == 0xED ? 0x9F : 0xBF)) return false;
      const bool endsPlane = lead == 0xEF && Byte(at_[-1]) == 0xBF;  // U+FFFE and U+FFFF
      return TakeBetween(0x80, endsPlane ? 0xBD : 0xBF);
    }
    return TakeBetween(lead == 0xF0 ? 0x90 : 0x80, lead == 0xF4 ? 0x8F : 0xBF) &&
           TakeBetween(0x80, 0xBF) && TakeBetween(0x80, 0xBF);
  }

  // Character data up to a tag.
  bool TakeText() {
    for (;;) {
      (void)Skip(kTextByte);
      if (*at_ == '<') return true;
      if (*at_ == '&' ? !TakeReference() : !TakeSequence()) return false;
    }
  }

  // A value with its quotes.
  bool TakeValue() {
    const char quote = *at_;
    if (quote != '"' && quote != '\'') return false;
    ++at_;
    for (;;) {
      (void)Skip(kValueByte);
      if (Take(quote)) return true;
      if (*at_ == '"' || *at_ == '\'') {
        ++at_;
      } else if (*at_ == '&' ? !TakeReference() : !TakeSequence()) {
        return false;
      }
    }
  }

  // A byte-order mark and the declaration, each of which may be missing, and space.
  bool TakeProlog() {
    if (*at_ == '\xEF' && !Take("\xEF\xBB\xBF")) return false;
    if (*at_ == '<' && at_[1] == '?' && !TakeDeclaration()) return false;
    (void)Skip(kSpace);
    return true;
  }

 private:
  bool TakeBetween(uint8_t low, uint8_t high) {
    if (Byte(*at_) < low || Byte(*at_) > high) return false;
    ++at_;
    return true;
  }

  bool TakeReference() {
    ++at_;
    switch (*at_) {
      case '#':
        ++at_;
        return TakeCharacterNumber();
      case 'a':
        ++at_;
        return *at_ == 'm' ? Take("mp;") : Take("pos;");
      case 'g':
        return Take("gt;");
      case 'l':
        return Take("lt;");
      default:
        return Take("quot;");
    }
  }

  // Of a character that every XML document may hold, but for those beyond the first planes.
  bool TakeCharacterNumber() {
    uint32_t number = 0;
    const uint32_t base = Take('x') ? 16 : 10;
    for (; number < 0xD800; ++at_) {
      const int digit = DigitOf(*at_);
      if (digit < 0 || digit >= static_cast<int>(base)) break;
      number = number * base + static_cast<uint32_t>(digit);
    }
    const bool isSpace = number == '\t' || number == '\n' || number == '\r';
    return (isSpace || (number >= ' ' && number < 0xD800)) && Take(';');
  }

  bool TakeDeclaration() {
    if (!Take("<?xml") || !Skip(kSpace) || !Take("version=") || !TakeQuoted("1.0", "1.0"))
      return false;
    bool spaced = Skip(kSpace);
    if (*at_ == 'e') {
      if (!spaced || !Take("encoding=") || !TakeQuoted("utf-8", "UTF-8")) return false;
      spaced = Skip(kSpace);
    }
    if (*at_ == 's') {
      if (!spaced || !Take("standalone=") || !TakeQuoted("yes", "no")) return false;
      (void)Skip(kSpace);
    }
    return Take("?>");
  }

  // One of two words, which begin differently or are the same.
  bool TakeQuoted(std::string_view one, std::string_view other) {
    const char quote = *at_;
    if (quote != '"' && quote != '\'') return false;
    ++at_;
    return Take(*at_ == one.front() ? one : other) && Take(quote);
  }

  const char* at_;
};

PlainScanner::Cursor PlainScanner::CursorAt(size_t at) const {
  return Cursor(document_.data() + at);
}

PlainScanner::Step PlainScanner::Stop(const Cursor& cursor) const {
  const bool atEnd = cursor.at() == document_.data() + document_.size();
  return atEnd && document_.size() - at_ < kMaxPlainPiece ? Step::kMore : Step::kOther;
}

PlainScanner::Range PlainScanner::RangeTo(const char* begin, const char* end) const {
  return {static_cast<uint32_t>(begin - document_.data()), static_cast<uint32_t>(end - begin)};
}

PlainScanner::Step PlainScanner::NextTag() {
  if (endFollows_) {
    endFollows_ = false;
    isEnd_ = true;
    Leave();
    return Step::kDone;
  }
  Cursor cursor = CursorAt(at_);
  if (at_ == 0) {
    if (!cursor.TakeProlog()) return Stop(cursor);
  } else if (!insideRoot()) {
    (void)cursor.Skip(kSpace);
    const bool atEnd = cursor.at() == document_.data() + document_.size();
    return atEnd && isWhole_ ? Step::kEndOfData : Stop(cursor);
  } else if (!cursor.TakeText()) {
    return Stop(cursor);
  }
  const char* const begin = cursor.at();
  if (!cursor.Take('<')) return Stop(cursor);
  const uint32_t bindings = bindingCount_;
  if (cursor.Peek() == '/' ? !TakeEndTag(&cursor) : !TakeStartTag(&cursor)) {
    bindingCount_ = bindings;
    return Stop(cursor);
  }
  text_ = RangeTo(begin, cursor.at());
  if (text_.size > kMaxPlainPiece) return Step::kOther;
  items_ += isEnd_ ? 1 : 1 + attributeCount_ + bindingCount_ - bindings;
  if (items_ > kMaxPlainItems) return Step::kOther;
  at_ = static_cast<size_t>(cursor.at() - document_.data());
  return Step::kDone;
}

bool PlainScanner::TakeName(Cursor* cursor, Name* name) const {
  const char* const begin = cursor->at();
  name->prefixSize = 0;
  if (!IsOf(cursor->Peek(), kNameStart)) return false;
  (void)cursor->Skip(kNameByte);
  if (cursor->Peek() == ':') {
    name->prefixSize = static_cast<uint32_t>(cursor->at() - begin);
    (void)cursor->Take(':');
    if (!IsOf(cursor->Peek(), kNameStart)) return false;
    (void)cursor->Skip(kNameByte);
  }
  name->whole = RangeTo(begin, cursor->at());
  return true;
}

bool PlainScanner::TakeEndTag(Cursor* cursor) {
  if (!insideRoot()) return false;
  const Element& element = elements_[depth_ - 1];
  if (!cursor->Take('/') || !cursor->Take(View(element.name.whole))) return false;
  (void)cursor->Skip(kSpace);
  if (!cursor->Take('>')) return false;
  tag_ = element;
  isEnd_ = true;
  Leave();
  return true;
}

bool PlainScanner::TakeStartTag(Cursor* cursor) {
  Element element{};
  element.bindings = bindingCount_;
  attributeCount_ = 0;
  if (depth_ == kMaxDepth || !TakeName(cursor, &element.name)) return false;
  while (cursor->Skip(kSpace)) {
    if (cursor->Peek() == '/' || cursor->Peek() == '>') break;
    if (!TakeAttribute(cursor)) return false;
  }
  const bool isEmpty = cursor->Take('/');
  if (!cursor->Take('>') || !Resolve(&element)) return false;
  elements_[depth_++] = element;
  tag_ = element;
  isEnd_ = false;
  endFollows_ = isEmpty;
  return true;
}

bool PlainScanner::TakeAttribute(Cursor* cursor) {
  Name name;
  if (!TakeName(cursor, &name) || !cursor->Take('=')) return false;
  const char* const begin = cursor->at() + 1;
  if (!cursor->TakeValue()) return false;
  const Range value = RangeTo(begin, cursor->at() - 1);
  if (View(name.whole) == kDeclaration) return Declare({}, value);
  if (Prefix(name) == kDeclaration) return Declare(LocalRange(name), value);
  if (attributeCount_ == kMaxAttributes) return false;
  attributes_[attributeCount_++] = {name, value};
  return true;
}

bool PlainScanner::Declare(Range prefix, Range uri) {
  const std::string_view text = View(prefix);
  if (bindingCount_ == kMaxBindings || text == kDeclaration) return false;
  const bool isReserved =
      text == kXmlPrefix ? View(uri) != kXmlNamespace : MayBeReserved(View(uri));
  if (uri.size > kMaxNamespaceUri || isReserved) return false;
  if (View(uri).find('&') != std::string_view::npos) return false;
  if (uri.size == 0 && prefix.size != 0) return false;
  bindings_[bindingCount_++] = {prefix, uri};
  return true;
}

// Finds what the prefixes of the tag stand for. False when one stands for nothing or something
// occurs twice: then a full parser tells whether that is a fault.
bool PlainScanner::Resolve(Element* element) const {
  for (uint32_t i = element->bindings; i < bindingCount_; ++i) {
    for (uint32_t before = element->bindings; before < i; ++before) {
      if (View(bindings_[before].prefix) == View(bindings_[i].prefix)) return false;
    }
  }
  const std::string_view prefix = Prefix(element->name);
  const Binding* const binding = FindBinding(prefix);
  if (binding == nullptr && !prefix.empty()) return false;
  if (binding != nullptr) element->uri = binding->uri;
  for (uint32_t i = 0; i < attributeCount_; ++i) {
    const AttributeEntry& attribute = attributes_[i];
    const std::string_view local = View(LocalRange(attribute.name));
    for (uint32_t before = 0; before < i; ++before) {
      if (View(LocalRange(attributes_[before].name)) == local) return false;
    }
    const std::string_view itsPrefix = Prefix(attribute.name);
    if (!itsPrefix.empty() && itsPrefix != kXmlPrefix && FindBinding(itsPrefix) == nullptr)
      return false;
  }
  return true;
}

const PlainScanner::Binding* PlainScanner::FindBinding(std::string_view prefix) const {
  for (uint32_t i = bindingCount_; i > 0; --i) {
    const Binding& binding = bindings_[i - 1];
    if (binding.prefix.size != prefix.size()) continue;
    if (View(binding.prefix) == prefix) return &binding;
  }
  return nullptr;
}

void PlainScanner::Leave() { bindingCount_ = elements_[--depth_].bindings; }

PlainScanner::Step PlainScanner::Text(std::string_view* text) const {
  *text = {};
  if (endFollows_ || !insideRoot()) return Step::kDone;
  Cursor cursor = CursorAt(at_);
  if (!cursor.TakeText()) return Stop(cursor);
  const std::string_view found = View(RangeTo(document_.data() + at_, cursor.at()));
  if (found.find_first_of("&\r") != std::string_view::npos) return Step::kOther;
  (void)cursor.Take('<');
  if (cursor.Peek() != '/' && !IsOf(cursor.Peek(), kNameStart)) return Stop(cursor);
  *text = found.substr(0, kMaxContent);
  return Step::kDone;
}

std::optional<std::string_view> PlainScanner::Attribute(std::string_view localName) const {
  if (isEnd_) return std::nullopt;
  for (uint32_t i = 0; i < attributeCount_; ++i) {
    if (View(LocalRange(attributes_[i].name)) == localName) return View(attributes_[i].value);
  }
  return std::nullopt;
}

}  // namespace fi::xml
