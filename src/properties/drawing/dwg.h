// AutoCAD drawings: the release letters at the start.
#ifndef FI_PROPERTIES_DRAWING_DWG_H_
#define FI_PROPERTIES_DRAWING_DWG_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadDwgProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_DRAWING_DWG_H_
