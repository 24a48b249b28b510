// XML and HTML: the declared encoding, the version or document type, and the schema of the root.
#ifndef FI_PROPERTIES_TEXT_MARKUP_H_
#define FI_PROPERTIES_TEXT_MARKUP_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadMarkupProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_TEXT_MARKUP_H_
