// GIF (Graphics Interchange Format, 87a and 89a): the version.
#ifndef FI_PROPERTIES_IMAGE_GIF_H_
#define FI_PROPERTIES_IMAGE_GIF_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadGifProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_IMAGE_GIF_H_
