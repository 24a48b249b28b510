// Text: the character set by its bytes, and the ends of its lines.
#ifndef FI_PROPERTIES_TEXT_TEXT_H_
#define FI_PROPERTIES_TEXT_TEXT_H_

#include "properties/record/property_question.h"

namespace fi {

// Nothing for bytes that are no text. Looks at the first 256 KB.
void ReadTextProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_TEXT_TEXT_H_
