// Office Open XML (ECMA-376) and its kin: strict or transitional, version of the application,
// macros and signatures.
#ifndef FI_PROPERTIES_PACKAGE_OOXML_H_
#define FI_PROPERTIES_PACKAGE_OOXML_H_

#include "formatid/io.h"
#include "properties/record/property_set.h"

namespace fi {

// `package` is an open package view, which is borrowed.
void ReadOfficeOpenXmlProperties(IOHandle* package, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_PACKAGE_OOXML_H_
