// OpenDocument packages and those of the office suites before it.
#ifndef FI_PROBES_PACKAGE_OPENDOCUMENT_H_
#define FI_PROBES_PACKAGE_OPENDOCUMENT_H_

#include "formatid/formatid.h"
#include "formatid/io.h"
#include "probes/package/package_member.h"

namespace fi {

// kGoOn when the package has no manifest; otherwise the chain ends, and `*id` is what manifest and
// generator say, or as it was.
GoOn OpenDocumentProbe(IOHandle* package, FormatId* id);

}  // namespace fi

#endif  // FI_PROBES_PACKAGE_OPENDOCUMENT_H_
