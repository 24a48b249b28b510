// Portable executables (Microsoft PE Format): machine, kind, and whether a signature is attached.
#ifndef FI_PROPERTIES_PROGRAM_PE_H_
#define FI_PROPERTIES_PROGRAM_PE_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadPeProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_PROGRAM_PE_H_
