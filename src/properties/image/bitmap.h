// Windows and OS/2 bitmaps: the version by the size of the header.
#ifndef FI_PROPERTIES_IMAGE_BITMAP_H_
#define FI_PROPERTIES_IMAGE_BITMAP_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadBitmapProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_IMAGE_BITMAP_H_
