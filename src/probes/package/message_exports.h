// Packages that messages were exported into.
#ifndef FI_PROBES_PACKAGE_MESSAGE_EXPORTS_H_
#define FI_PROBES_PACKAGE_MESSAGE_EXPORTS_H_

#include "formatid/formatid.h"
#include "formatid/io.h"
#include "stream/package_member.h"

namespace fi {

// kGoOn unless the package holds a ptf member and a manifest with a transcript: then `*id` is 6205.
GoOn MessageExportManifestProbe(IOHandle* package, FormatId* id);

// kGoOn unless the package holds the manifest of exported short messages: then `*id` is 1833.
GoOn ShortMessageManifestProbe(IOHandle* package, FormatId* id);

}  // namespace fi

#endif  // FI_PROBES_PACKAGE_MESSAGE_EXPORTS_H_
