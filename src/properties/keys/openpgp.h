// OpenPGP (RFC 9580), binary or in armour: encrypted for keys or with a password, or signed.
#ifndef FI_PROPERTIES_KEYS_OPENPGP_H_
#define FI_PROPERTIES_KEYS_OPENPGP_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadOpenPgpProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_KEYS_OPENPGP_H_
