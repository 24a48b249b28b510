// Cryptographic messages (RFC 5652): the type of the content.
#ifndef FI_PROPERTIES_KEYS_CMS_H_
#define FI_PROPERTIES_KEYS_CMS_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadCmsProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_KEYS_CMS_H_
