// Mach-O: architectures, those of universal binaries included, and the type of the file.
#ifndef FI_PROPERTIES_PROGRAM_MACH_O_H_
#define FI_PROPERTIES_PROGRAM_MACH_O_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadMachOProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_PROGRAM_MACH_O_H_
