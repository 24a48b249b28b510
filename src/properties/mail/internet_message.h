// Internet messages: S/MIME (RFC 8551) and OpenPGP (RFC 3156) by the type of the content.
#ifndef FI_PROPERTIES_MAIL_INTERNET_MESSAGE_H_
#define FI_PROPERTIES_MAIL_INTERNET_MESSAGE_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadInternetMessageProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_MAIL_INTERNET_MESSAGE_H_
