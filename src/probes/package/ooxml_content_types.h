// What the content type of a package's main part says about the package.
#ifndef FI_PROBES_PACKAGE_OOXML_CONTENT_TYPES_H_
#define FI_PROBES_PACKAGE_OOXML_CONTENT_TYPES_H_

#include "formatid/formatid.h"

namespace fi {

// The format of a terminated content type, in the generation of 2007 where versions are told apart;
// 1802 when it names none.
FormatId FormatOfContentType(const char16_t* contentType);

// The same, ASCII letters compared without regard to case.
FormatId FormatOfContentTypeAnyCase(const char16_t* contentType);

}  // namespace fi

#endif  // FI_PROBES_PACKAGE_OOXML_CONTENT_TYPES_H_
