#include "probes/markup/document_root.h"

#include "stream/text_view.h"

namespace fi {
namespace {

constexpr std::string_view kDeclares = "xmlns";
constexpr size_t kTarget = 32;  // characters of an instruction's target that are kept

bool IsQuote(uint32_t c) { return c == '"' || c == '\''; }

// ASCII letters, and all above ASCII.
bool BeginsName(uint32_t c) {
  if (c == kEndOfData) return false;
  return c >= 0x80 || c == '_' || IsLetter(static_cast<char>(c));
}

bool SkipQuoted(MarkupReader& reader, uint32_t quote) {
  for (uint32_t c = reader.Next(); c != kEndOfData; c = reader.Next()) {
    if (c == quote) return true;
  }
  return false;
}

// Passes an internal subset whose "[" was read. Comments and instructions in it may hold quotes
// that have no counterpart.
bool SkipSubset(MarkupReader& reader) {
  for (uint32_t c = reader.Next(); c != kEndOfData; c = reader.Next()) {
    if (c == ']') return true;
    if (IsQuote(c) && !SkipQuoted(reader, c)) return false;
    if (c != '<') continue;
    c = reader.Next();
    if (c == '?' && !reader.SkipPast("?>")) return false;
    if (c != '!') continue;
    if (reader.Next() != '-') {
      reader.PutBack();
    } else if (reader.Next() == '-' && !reader.SkipPast("-->")) {
      return false;
    }
  }
  return false;
}

// The attributes of a start tag, in their order.
class Attributes {
 public:
  explicit Attributes(std::string_view tag) : rest_(tag) {
    while (!rest_.empty() && !IsWhiteSpace(rest_.front())) rest_.remove_prefix(1);
  }

  bool Next(std::string_view* name, std::string_view* value) {
    rest_ = SkipSpace(rest_);
    const size_t equals = rest_.find('=');
    if (equals == std::string_view::npos) return false;
    *name = rest_.substr(0, equals);
    while (!name->empty() && IsWhiteSpace(name->back())) name->remove_suffix(1);
    rest_ = SkipSpace(rest_.substr(equals + 1));
    if (rest_.empty() || (rest_.front() != '"' && rest_.front() != '\'')) return false;
    const size_t end = rest_.find(rest_.front(), 1);
    if (end == std::string_view::npos) return false;
    *value = rest_.substr(1, end - 1);
    rest_.remove_prefix(end + 1);
    return true;
  }

 private:
  std::string_view rest_;
};

}  // namespace

DocumentRoot::DocumentRoot(IdentificationStream* stream, const TextForm& form, uint32_t limit) {
  MarkupReader reader(stream, form, limit);
  bool atStart = true;
  while (ReadPiece(reader, atStart) == Step::kGoOn) atStart = false;
  isBinary_ = reader.MetNul();
}

// Reads one instruction, comment or declaration, or the root's tag.
DocumentRoot::Step DocumentRoot::ReadPiece(MarkupReader& reader, bool atStart) {
  uint32_t c = reader.Next();
  if (IsMarkupSpace(c)) {
    atStart = false;
    c = reader.NextBehindSpace();
  }
  if (c != '<') return Step::kStop;
  c = reader.Next();
  if (c == '?') return ReadInstruction(reader, atStart);
  if (c == '!') return ReadDeclaration(reader);
  if (BeginsName(c)) {
    reader.PutBack();
    ReadTag(reader);
  }
  return Step::kStop;
}

DocumentRoot::Step DocumentRoot::ReadInstruction(MarkupReader& reader, bool atStart) {
  KeptText<kTarget> target;
  uint32_t c = reader.Next();
  for (; c != kEndOfData && !IsMarkupSpace(c) && c != '?'; c = reader.Next()) target.Add(c);
  if (c == '?') reader.PutBack();
  const bool ends = reader.SkipPast("?>");
  if (atStart && IsMarkupSpace(c)) isXml_ = target.View() == "xml";
  // A template begins with the instructions of its processor.
  if (!isXml_ && !target.View().starts_with("xml")) return Step::kStop;
  if (target.View() == "mso-infoPathSolution") isForm_ = true;
  return ends ? Step::kGoOn : Step::kStop;
}

// A comment or a document type.
DocumentRoot::Step DocumentRoot::ReadDeclaration(MarkupReader& reader) {
  uint32_t c = reader.Next();
  if (c == '-') {
    return reader.Next() == '-' && reader.SkipPast("-->") ? Step::kGoOn : Step::kStop;
  }
  KeptText<7> keyword;
  for (; c != kEndOfData && !keyword.full(); c = reader.Next()) keyword.Add(c);
  if (!EqualsNoCase(keyword.View(), "doctype") || !IsMarkupSpace(c)) return Step::kStop;
  c = reader.NextBehindSpace();
  for (; c != '>'; c = reader.Next()) {
    if (c == kEndOfData) return Step::kStop;
    if (c == '[') {
      if (!SkipSubset(reader)) return Step::kStop;
    } else {
      doctype_.Add(c);
    }
  }
  return Step::kGoOn;
}

void DocumentRoot::ReadTag(MarkupReader& reader) {
  uint32_t quote = 0;
  for (uint32_t c = reader.Next(); c != kEndOfData && !tag_.full(); c = reader.Next()) {
    if (quote == 0 && c == '>') return;
    if (quote != 0 && c == quote) {
      quote = 0;
    } else if (quote == 0 && IsQuote(c)) {
      quote = c;
    }
    tag_.Add(c);
  }
}

std::string_view DocumentRoot::Name() const {
  const std::string_view tag = tag_.View();
  return tag.substr(0, tag.find_first_of(" \t\r\n/"));
}

std::string_view DocumentRoot::LocalName() const {
  const std::string_view name = Name();
  const size_t colon = name.find(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

std::string_view DocumentRoot::Namespace() const {
  const std::string_view qualified = Name();
  const size_t colon = qualified.find(':');
  Attributes attributes(tag_.View());
  std::string_view name;
  std::string_view value;
  while (attributes.Next(&name, &value)) {
    if (!name.starts_with(kDeclares)) continue;
    name.remove_prefix(kDeclares.size());
    const bool isOwn = colon == std::string_view::npos
                           ? name.empty()
                           : name.starts_with(':') && name.substr(1) == qualified.substr(0, colon);
    if (isOwn) return value;
  }
  return {};
}

bool DocumentRoot::DeclaresNamespace() const {
  Attributes attributes(tag_.View());
  std::string_view name;
  std::string_view value;
  while (attributes.Next(&name, &value)) {
    if (name == kDeclares || name.starts_with("xmlns:")) return true;
  }
  return false;
}

std::string_view DocumentRoot::Attribute(std::string_view wanted) const {
  Attributes attributes(tag_.View());
  std::string_view name;
  std::string_view value;
  while (attributes.Next(&name, &value)) {
    if (name == wanted) return value;
  }
  return {};
}

}  // namespace fi
