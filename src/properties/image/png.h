// PNG (W3C, PNG Third Edition): the version by its chunks, and animation.
#ifndef FI_PROPERTIES_IMAGE_PNG_H_
#define FI_PROPERTIES_IMAGE_PNG_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadPngProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_IMAGE_PNG_H_
