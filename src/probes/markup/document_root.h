// The prologue of a markup document and the start tag of its root: what tells an XML vocabulary
// from another. Follows XML 1.0 as far as the tag; entities, and whether the document is
// well-formed, do not matter here.
#ifndef FI_PROBES_MARKUP_DOCUMENT_ROOT_H_
#define FI_PROBES_MARKUP_DOCUMENT_ROOT_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "stream/id_stream.h"
#include "stream/markup_reader.h"

namespace fi {

// Text of a document, as much as fits.
template <size_t kCapacity>
class KeptText {
 public:
  void Add(uint32_t c) {
    if (size_ < kCapacity) bytes_[size_++] = static_cast<char>(c);
  }
  bool full() const { return size_ == kCapacity; }
  std::string_view View() const { return {bytes_.data(), size_}; }

 private:
  std::array<char, kCapacity> bytes_;
  size_t size_ = 0;
};

class DocumentRoot {
 public:
  // Reads up to the end of the root's start tag, `limit` characters at most.
  DocumentRoot(IdentificationStream* stream, const TextForm& form, uint32_t limit);

  // Whether an XML declaration stands at the very start.
  bool isXml() const { return isXml_; }
  // Whether the text holds a NUL, which no markup does.
  bool isBinary() const { return isBinary_; }
  // Whether an instruction says that a form belongs to the document.
  bool isForm() const { return isForm_; }

  // What stands behind "<!DOCTYPE", without an internal subset; empty where there is none.
  std::string_view Doctype() const { return doctype_.View(); }

  bool found() const { return !tag_.View().empty(); }
  // Name of the root's element with its prefix, and without; empty where there is none.
  std::string_view Name() const;
  std::string_view LocalName() const;
  // The namespace of the root, as written; empty where none is declared.
  std::string_view Namespace() const;
  // Whether the root declares any namespace, its own or another.
  bool DeclaresNamespace() const;
  // The value of an attribute of the root, as written; empty where there is none.
  std::string_view Attribute(std::string_view wanted) const;

 private:
  // How one piece of the prologue ended.
  enum class Step : uint8_t { kGoOn, kStop };

  Step ReadPiece(MarkupReader& reader, bool atStart);
  Step ReadInstruction(MarkupReader& reader, bool atStart);
  Step ReadDeclaration(MarkupReader& reader);
  void ReadTag(MarkupReader& reader);

  // Bytes of a tag that are kept; office documents declare their namespaces in up to 3 KB.
  static constexpr size_t kTag = 4096;
  static constexpr size_t kDoctype = 256;

  bool isXml_ = false;
  bool isBinary_ = false;
  bool isForm_ = false;
  KeptText<kDoctype> doctype_;
  KeptText<kTag> tag_;
};

}  // namespace fi

#endif  // FI_PROBES_MARKUP_DOCUMENT_ROOT_H_
