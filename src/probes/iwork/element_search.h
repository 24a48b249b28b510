// A search for elements by their local names that is much faster than parsing: the index of an
// iWork document has megabytes.
#ifndef FI_PROBES_IWORK_ELEMENT_SEARCH_H_
#define FI_PROBES_IWORK_ELEMENT_SEARCH_H_

#include <span>
#include <string_view>

#include "formatid/io.h"

namespace fi {

// Whether an XML reader would find exactly one start tag with one of the local names in `document`,
// in any namespace. True is certain where the root has such a name. False may be wrong: bytes
// elsewhere can look like such a tag, and some documents cannot be searched. The handle keeps its
// position.
// REQUIRES: the names have 2 to 32 bytes.
bool HasOneElementOf(std::span<const std::string_view> names, IOHandle* document);

}  // namespace fi

#endif  // FI_PROBES_IWORK_ELEMENT_SEARCH_H_
