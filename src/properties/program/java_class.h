// Java class files (Java Virtual Machine, chapter 4): the version of the class format.
#ifndef FI_PROPERTIES_PROGRAM_JAVA_CLASS_H_
#define FI_PROPERTIES_PROGRAM_JAVA_CLASS_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadJavaClassProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_PROGRAM_JAVA_CLASS_H_
