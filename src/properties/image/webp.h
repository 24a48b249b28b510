// WebP (RFC 9649): lossy, lossless or extended, and animation.
#ifndef FI_PROPERTIES_IMAGE_WEBP_H_
#define FI_PROPERTIES_IMAGE_WEBP_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadWebPProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_IMAGE_WEBP_H_
