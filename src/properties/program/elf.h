// ELF (System V ABI): class and byte order, machine, and the type of the file.
#ifndef FI_PROPERTIES_PROGRAM_ELF_H_
#define FI_PROPERTIES_PROGRAM_ELF_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadElfProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_PROGRAM_ELF_H_
