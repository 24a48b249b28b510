// ZIP packages of documents: which family it is tells a member.
#ifndef FI_PROPERTIES_PACKAGE_PACKAGE_H_
#define FI_PROPERTIES_PACKAGE_PACKAGE_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadPackageProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_PACKAGE_PACKAGE_H_
