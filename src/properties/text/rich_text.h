// Rich Text Format: the version behind the first control word, and the character set of the text.
#ifndef FI_PROPERTIES_TEXT_RICH_TEXT_H_
#define FI_PROPERTIES_TEXT_RICH_TEXT_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadRichTextProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_TEXT_RICH_TEXT_H_
