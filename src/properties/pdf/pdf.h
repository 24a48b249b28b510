// PDF (ISO 32000): version, subsets by the XMP metadata, encryption, signatures, and what stands
// behind the end.
#ifndef FI_PROPERTIES_PDF_PDF_H_
#define FI_PROPERTIES_PDF_PDF_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadPdfProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_PDF_PDF_H_
