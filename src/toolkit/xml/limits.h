// Limits of the XML reader. What real packages hold stays far below them; a document beyond one
// ends there as if it were broken, and what was read so far counts. Sizes are in bytes.
#ifndef FI_TOOLKIT_XML_LIMITS_H_
#define FI_TOOLKIT_XML_LIMITS_H_

#include <cstddef>
#include <cstdint>

namespace fi::xml {

// Of one document: the lists of parts and relationships of packages with ten thousand parts. The
// most expensive ones, in which every name is another, take 0.1 s and 20 MB.
inline constexpr uint32_t kMaxDocument = 2 << 20;

// Of what is parsed as one piece: a tag, a comment, an instruction. A piece that is not complete is
// parsed again from its start when more has been read.
inline constexpr uint32_t kMaxPiece = 256 << 10;

// Elements in elements.
inline constexpr uint32_t kMaxDepth = 1024;

// A prefix stands for its whole namespace, so that a few bytes of a document become many: the names
// and values handed over may come to kMaxExpanded.
inline constexpr uint32_t kMaxNamespaceUri = 512;
inline constexpr uint32_t kMaxExpanded = 32 << 20;

// Attributes of an element that are kept; further ones are as if they were not there. So is one
// that does not fit into what is kept of an element's names and values.
inline constexpr uint32_t kMaxAttributes = 64;
inline constexpr size_t kMaxTagText = 64 << 10;

// Character data that is kept between two tags; the rest is cut off.
inline constexpr size_t kMaxContent = 16 << 10;

// Pieces in which the document is read: what a reader looks for often stands at the beginning.
inline constexpr uint32_t kFirstChunk = 512;
inline constexpr uint32_t kLargestChunk = 4 << 10;

}  // namespace fi::xml

#endif  // FI_TOOLKIT_XML_LIMITS_H_
