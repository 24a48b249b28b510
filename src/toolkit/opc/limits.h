// Limits of the package reader. Relationships and targets beyond a limit are ignored. Parts are XML
// documents, whose own limits stand in toolkit/xml/limits.h.
#ifndef FI_TOOLKIT_OPC_LIMITS_H_
#define FI_TOOLKIT_OPC_LIMITS_H_

#include <cstddef>

namespace fi::opc {

// Of the relationships of one source, the characters of types, and of identifiers and targets.
inline constexpr size_t kMaxRelationshipText = size_t{1} << 20;

// Bytes of a target that is followed.
inline constexpr size_t kMaxReference = 1024;

}  // namespace fi::opc

#endif  // FI_TOOLKIT_OPC_LIMITS_H_
