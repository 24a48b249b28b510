// 7z archives: encryption of what is packed, or of the header too.
#ifndef FI_PROPERTIES_ARCHIVE_SEVEN_ZIP_H_
#define FI_PROPERTIES_ARCHIVE_SEVEN_ZIP_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadSevenZipProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_ARCHIVE_SEVEN_ZIP_H_
