// Limits of the XML reader. What real packages hold stays far below them; a document beyond one
// ends there as if it were broken, and what was read so far counts. Sizes are in bytes.
#ifndef FI_TOOLKIT_XML_LIMITS_H_
#define FI_TOOLKIT_XML_LIMITS_H_

#include <cstddef>
#include <cstdint>

#include "platform/xml.h"

namespace fi::xml {

// Of one document: the lists of parts and relationships of packages with ten thousand parts.
inline constexpr uint32_t kMaxDocument = kXmlMaxDocument;

// Tags, attributes and declarations of namespaces in a document: ten thousand relationships come to
// 40,000. Each may have a name of its own, which Expat keeps, or a prefix that stands for a whole
// namespace. The most expensive documents take 25 ms and 4 MB.
inline constexpr uint32_t kMaxItems = 64 << 10;

// Of what is parsed as one piece: a tag, a comment, an instruction. A piece that is not complete is
// parsed again from its start when more has been read.
inline constexpr uint32_t kMaxPiece = 256 << 10;

// Elements in elements.
inline constexpr uint32_t kMaxDepth = 1024;

inline constexpr uint32_t kMaxNamespaceUri = 512;

// Attributes of an element that are kept; further ones are as if they were not there. So is one
// that does not fit into what is kept of an element's names and values.
inline constexpr uint32_t kMaxAttributes = 64;
inline constexpr size_t kMaxTagText = 64 << 10;

// Character data that is kept between two tags; the rest is cut off.
inline constexpr size_t kMaxContent = 16 << 10;

// A tag with the text before it, in a plain document; with a larger one it is not plain. A piece
// that is not complete is scanned again when more has been read. It keeps to what is kept of tags.
inline constexpr size_t kMaxPlainPiece = 32 << 10;
static_assert(kMaxPlainPiece + kMaxNamespaceUri <= kMaxTagText);

// Pieces in which the document is read: what a reader looks for often stands at the beginning.
inline constexpr uint32_t kFirstChunk = 512;
inline constexpr uint32_t kLargestChunk = 4 << 10;

}  // namespace fi::xml

#endif  // FI_TOOLKIT_XML_LIMITS_H_
