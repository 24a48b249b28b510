// Finds the default namespace that an XML document's first element declares. Deliberately shallow:
// the reader sees the first kilobyte, decodes nothing (a UTF-16 document has no namespace here),
// and knows only the attribute xmlns and the processing instruction aid.
#ifndef FI_SIGNATURE_NAMESPACE_READER_H_
#define FI_SIGNATURE_NAMESPACE_READER_H_

#include <array>
#include <cstdint>

#include "stream/id_stream.h"

namespace fi {

// A NUL-terminated text of one byte per element, of at most 255 bytes; or a state in element 0.
using NamespaceBuffer = std::array<uint16_t, 256>;

inline constexpr uint16_t kNamespaceUnread = 0xFFFF;
inline constexpr uint16_t kNamespaceNone = 0xFFFE;

constexpr NamespaceBuffer UnreadNamespace() {
  NamespaceBuffer buffer{};
  buffer[0] = kNamespaceUnread;
  return buffer;
}

// Stores the namespace, "aid" for a document with that processing instruction, or kNamespaceNone.
// Reads from the start of the file and leaves the stream where the scan stopped.
void ReadXmlNamespace(IdentificationStream* stream, NamespaceBuffer& buffer);

}  // namespace fi

#endif  // FI_SIGNATURE_NAMESPACE_READER_H_
