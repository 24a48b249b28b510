// HEIF and its kin (ISO/IEC 23008-12): the major brand.
#ifndef FI_PROPERTIES_IMAGE_HEIF_H_
#define FI_PROPERTIES_IMAGE_HEIF_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadHeifProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_IMAGE_HEIF_H_
