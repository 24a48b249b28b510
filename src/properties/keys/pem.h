// PEM (RFC 7468): whether a private key is encrypted.
#ifndef FI_PROPERTIES_KEYS_PEM_H_
#define FI_PROPERTIES_KEYS_PEM_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadPemProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_KEYS_PEM_H_
