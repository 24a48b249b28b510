// TIFF (Adobe TIFF 6.0), BigTIFF and DNG (Adobe DNG 1.7): byte order, and the version of DNG.
#ifndef FI_PROPERTIES_IMAGE_TIFF_H_
#define FI_PROPERTIES_IMAGE_TIFF_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadTiffProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_IMAGE_TIFF_H_
