// OpenDocument (OASIS): version, encryption, macros and signatures.
#ifndef FI_PROPERTIES_PACKAGE_OPENDOCUMENT_H_
#define FI_PROPERTIES_PACKAGE_OPENDOCUMENT_H_

#include "formatid/io.h"
#include "properties/record/property_set.h"

namespace fi {

// `package` is an open package view, which is borrowed.
void ReadOpenDocumentProperties(IOHandle* package, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_PACKAGE_OPENDOCUMENT_H_
