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

// What the probe would make of a document with that media type, which is terminated, and with the
// generator that `package`, where it is not null, names. 1802 when the type is of no kind that has
// identifiers. `version12`: it is OpenDocument 1.2.
FormatId OpenDocumentOfType(IOHandle* package, const char16_t* mediaType, bool version12);

}  // namespace fi

#endif  // FI_PROBES_OPENDOCUMENT_OPENDOCUMENT_H_
