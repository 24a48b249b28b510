// Reads the properties of a file whose format is known. A family of formats has a file pair of its
// own in this folder; families.cc is the one that knows them all.
#ifndef FI_PROPERTIES_FAMILIES_H_
#define FI_PROPERTIES_FAMILIES_H_

#include "properties/record/property_question.h"

namespace fi {

// Reads what the family of `question.id` knows, and of a format without a family what its text
// tells. Properties of damaged files are absent or say so; the identifier stays whatever they say.
void ReadProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_FAMILIES_H_
