// JPEG: the kind of file by its application segments, JFIF, Exif or SPIFF, and the version of that.
#ifndef FI_PROPERTIES_IMAGE_JPEG_H_
#define FI_PROPERTIES_IMAGE_JPEG_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadJpegProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_IMAGE_JPEG_H_
