// Packages that messages were exported into.
#ifndef FI_PROBES_PACKAGE_MESSAGE_EXPORTS_H_
#define FI_PROBES_PACKAGE_MESSAGE_EXPORTS_H_

#include "formatid/formatid.h"
#include "formatid/io.h"
#include "stream/package_member.h"

namespace fi {

// kGoOn unless the package holds a ptf member and a manifest with a transcript: then the chain ends
// with kFormatMessageExportTranscript.
PackageAnswer MessageExportManifestProbe(IOHandle* package);

// kGoOn unless the package holds the manifest of exported short messages: then the chain ends with
// kFormatShortMessageExportPackage.
PackageAnswer ShortMessageManifestProbe(IOHandle* package);

}  // namespace fi

#endif  // FI_PROBES_PACKAGE_MESSAGE_EXPORTS_H_
