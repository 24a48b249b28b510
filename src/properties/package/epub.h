// EPUB (W3C): version and rights management.
#ifndef FI_PROPERTIES_PACKAGE_EPUB_H_
#define FI_PROPERTIES_PACKAGE_EPUB_H_

#include "formatid/io.h"
#include "properties/record/property_set.h"

namespace fi {

// `package` is an open package view, which is borrowed.
void ReadEpubProperties(IOHandle* package, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_PACKAGE_EPUB_H_
