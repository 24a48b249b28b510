// JPEG 2000 (ISO/IEC 15444): the brand of the file, or a bare code stream.
#ifndef FI_PROPERTIES_IMAGE_JPEG2000_H_
#define FI_PROPERTIES_IMAGE_JPEG2000_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadJpeg2000Properties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_IMAGE_JPEG2000_H_
