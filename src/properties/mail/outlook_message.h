// Outlook items: S/MIME by the message class ([MS-OXOSMIME]).
#ifndef FI_PROPERTIES_MAIL_OUTLOOK_MESSAGE_H_
#define FI_PROPERTIES_MAIL_OUTLOOK_MESSAGE_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadOutlookMessageProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_MAIL_OUTLOOK_MESSAGE_H_
