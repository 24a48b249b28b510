// Office documents in compound files ([MS-DOC], [MS-XLS], [MS-PPT]): encryption by its kind
// ([MS-OFFCRYPTO]), macros and signatures.
#ifndef FI_PROPERTIES_OFFICE_BINARY_OFFICE_H_
#define FI_PROPERTIES_OFFICE_BINARY_OFFICE_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadBinaryOfficeProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_OFFICE_BINARY_OFFICE_H_
