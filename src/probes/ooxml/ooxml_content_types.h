// What the content type of a package's main part says about the package.
#ifndef FI_PROBES_OOXML_OOXML_CONTENT_TYPES_H_
#define FI_PROBES_OOXML_OOXML_CONTENT_TYPES_H_

#include <cstdint>

#include "formatid/formatid.h"
#include "platform/xml.h"

namespace fi {

// Elements of "[Content_Types].xml", as the tag maps number them.
enum : uint32_t { kTagDefault = 101, kTagOverride = 102, kTagTypes = 103 };

// Registers them in both namespaces that they have had. False when that fails.
bool AddContentTypesTags(UTXMLReader* reader);

// The format of a terminated content type, as the version of 2007 where versions have their own
// formats; kFormatZip for an unknown type.
FormatId FormatOfContentType(const char16_t* contentType);

// The same, ASCII letters compared without regard to case.
FormatId FormatOfContentTypeAnyCase(const char16_t* contentType);

}  // namespace fi

#endif  // FI_PROBES_OOXML_OOXML_CONTENT_TYPES_H_
