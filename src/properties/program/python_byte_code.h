// Python byte code: the version of the interpreter by its magic number.
#ifndef FI_PROPERTIES_PROGRAM_PYTHON_BYTE_CODE_H_
#define FI_PROPERTIES_PROGRAM_PYTHON_BYTE_CODE_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadPythonByteCodeProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_PROGRAM_PYTHON_BYTE_CODE_H_
