// Certificates (X.509) and keys with their certificates (PKCS #12) in DER.
#ifndef FI_PROPERTIES_KEYS_DER_OBJECTS_H_
#define FI_PROPERTIES_KEYS_DER_OBJECTS_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadCertificateProperties(const PropertyQuestion& question, PropertySet& out);
void ReadPkcs12Properties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_KEYS_DER_OBJECTS_H_
