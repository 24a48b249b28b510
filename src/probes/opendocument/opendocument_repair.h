// OpenDocument packages without one of the words text, spreadsheet, presentation and drawing in the
// first entry of the manifest.
#ifndef FI_PROBES_OPENDOCUMENT_OPENDOCUMENT_REPAIR_H_
#define FI_PROBES_OPENDOCUMENT_OPENDOCUMENT_REPAIR_H_

#include "formatid/formatid.h"
#include "formatid/io.h"

namespace fi {

// The format by the manifest's entry for the package, wherever that stands and whatever kind of
// document it names; kNoMatch without one.
FormatId FormatOfManifestRoot(IOHandle* package);

// The format by the element in the body of "content.xml", for packages whose manifest is lost or
// does not name the document; kNoMatch without one.
FormatId FormatOfContentBody(IOHandle* package);

}  // namespace fi

#endif  // FI_PROBES_OPENDOCUMENT_OPENDOCUMENT_REPAIR_H_
