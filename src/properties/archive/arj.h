// ARJ archives (ARJ TECHNOTE): encryption of files, and the form of the main header.
#ifndef FI_PROPERTIES_ARCHIVE_ARJ_H_
#define FI_PROPERTIES_ARCHIVE_ARJ_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadArjProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_ARCHIVE_ARJ_H_
