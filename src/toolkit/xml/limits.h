// Limits of the XML reader. Real packages stay far below them. A document beyond a limit ends there
// like a broken document: everything read before counts. Sizes are in bytes.
#ifndef FI_TOOLKIT_XML_LIMITS_H_
#define FI_TOOLKIT_XML_LIMITS_H_

#include <cstddef>
#include <cstdint>

#include "platform/xml.h"

namespace fi::xml {

// Of one document, as much as can be read of a member of a package. It is not kept.
inline constexpr uint32_t kMaxDocument = kXmlMaxDocument;

// Of a document that is kept while it is scanned, and its tags, attributes and declarations of
// namespaces: ten thousand relationships come to 40,000. Beyond, Expat goes on, which keeps names
// only.
inline constexpr uint32_t kMaxPlainDocument = 2 << 20;
inline constexpr uint32_t kMaxPlainItems = 64 << 10;

// Names of tags, attributes and prefixes that Expat keeps, each up to 64 KB in a document that is
// made so and 20 bytes in others. The first kFreeItems items are not looked at: they may all have
// names of their own. Lists of parts, sheets and titles have under ten names.
inline constexpr uint32_t kFreeItems = 64 << 10;
inline constexpr uint32_t kMaxMoreNames = 4 << 10;
inline constexpr uint32_t kMaxMoreNameBytes = 256 << 10;

// Bytes of names behind the free items, each as often as it stands, with its namespace: a prefix of
// one letter stands for up to 512 bytes.
inline constexpr uint64_t kMaxExpanded = 256 << 20;

// Of what is parsed as one piece: a tag, a comment, an instruction. A piece that is not complete is
// parsed again from its start when more has been read.
inline constexpr uint32_t kMaxPiece = 256 << 10;

// Elements in elements.
inline constexpr uint32_t kMaxDepth = 1024;

inline constexpr uint32_t kMaxNamespaceUri = 512;

// Attributes kept of an element, and bytes kept of its names and values. Attributes beyond either
// limit are ignored.
inline constexpr uint32_t kMaxAttributes = 64;
inline constexpr size_t kMaxTagText = 64 << 10;

// Character data that is kept between two tags; the rest is cut off.
inline constexpr size_t kMaxContent = 16 << 10;

// The largest tag of a plain document, with the text before the tag; a document with a larger tag
// is not plain. An incomplete piece is scanned again when more has been read. The limit stays below
// the memory for names and values of a tag.
inline constexpr size_t kMaxPlainPiece = 32 << 10;
static_assert(kMaxPlainPiece + kMaxNamespaceUri <= kMaxTagText);

// Pieces in which the document is read: what a reader looks for often stands at the beginning.
inline constexpr uint32_t kFirstChunk = 512;
inline constexpr uint32_t kLargestChunk = 4 << 10;

}  // namespace fi::xml

#endif  // FI_TOOLKIT_XML_LIMITS_H_
