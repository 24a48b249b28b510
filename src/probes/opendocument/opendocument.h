// OpenDocument packages and those of the office suites before it.
#ifndef FI_PROBES_OPENDOCUMENT_OPENDOCUMENT_H_
#define FI_PROBES_OPENDOCUMENT_OPENDOCUMENT_H_

#include "formatid/formatid.h"
#include "formatid/io.h"
#include "stream/package_member.h"

namespace fi {

// kGoOn when the package has no manifest; otherwise the chain ends with what manifest and generator
// say, or with no answer.
PackageAnswer OpenDocumentProbe(IOHandle* package);

// The format that the probe derives from a terminated media type and a generator; kFormatZip for a
// kind of document without identifiers. `package` is null, or the package to read the generator
// from. `version12`: the document is OpenDocument 1.2.
FormatId OpenDocumentOfType(IOHandle* package, const char16_t* mediaType, bool version12);

}  // namespace fi

#endif  // FI_PROBES_OPENDOCUMENT_OPENDOCUMENT_H_
