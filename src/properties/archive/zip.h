// ZIP archives (APPNOTE.TXT): how members are encrypted, and what stands around the archive.
#ifndef FI_PROPERTIES_ARCHIVE_ZIP_H_
#define FI_PROPERTIES_ARCHIVE_ZIP_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadZipProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_ARCHIVE_ZIP_H_
