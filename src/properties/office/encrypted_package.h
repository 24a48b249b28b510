// Office Open XML packages inside an encrypting compound file ([MS-OFFCRYPTO], 2.3.4): scheme and
// strength, or rights management.
#ifndef FI_PROPERTIES_OFFICE_ENCRYPTED_PACKAGE_H_
#define FI_PROPERTIES_OFFICE_ENCRYPTED_PACKAGE_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadEncryptedPackageProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_OFFICE_ENCRYPTED_PACKAGE_H_
