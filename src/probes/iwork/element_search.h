// A search for elements by their local names that is much faster than parsing: the index of an
// iWork document has megabytes.
#ifndef FI_PROBES_IWORK_ELEMENT_SEARCH_H_
#define FI_PROBES_IWORK_ELEMENT_SEARCH_H_

#include <span>
#include <string_view>

#include "formatid/io.h"

namespace fi {

// Whether exactly one start tag of what a reader of XML would read of `document` has one of the
// local names, in whatever namespace. True is certain, for a document whose root has such a name;
// false may only mean that bytes elsewhere look like such a tag, or that the document cannot be
// searched. The handle keeps its position.
// REQUIRES: the names have 2 to 32 bytes.
bool HasOneElementOf(std::span<const std::string_view> names, IOHandle* document);

}  // namespace fi

#endif  // FI_PROBES_IWORK_ELEMENT_SEARCH_H_
