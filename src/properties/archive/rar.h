// RAR archives, versions 1.4 to 5: encryption of files or of all headers, volumes and solid
// archives.
#ifndef FI_PROPERTIES_ARCHIVE_RAR_H_
#define FI_PROPERTIES_ARCHIVE_RAR_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadRarProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_ARCHIVE_RAR_H_
