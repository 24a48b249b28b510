// AutoCAD drawing interchange: the release in the header variable $ACADVER.
#ifndef FI_PROPERTIES_DRAWING_DXF_H_
#define FI_PROPERTIES_DRAWING_DXF_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadDxfProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_DRAWING_DXF_H_
