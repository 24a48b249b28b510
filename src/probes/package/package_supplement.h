// Packages that the fixed chain of probes leaves as plain ZIP archives.
#ifndef FI_PROBES_PACKAGE_PACKAGE_SUPPLEMENT_H_
#define FI_PROBES_PACKAGE_PACKAGE_SUPPLEMENT_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// The format of a ZIP file that the package dispatcher answers with kFormatZip; kNoMatch for a
// plain archive. A file whose central directory is lost is read by the headers of its members, and
// may then become whatever the dispatcher knows. Moves the position of the handle.
FormatId PackageSupplement(const IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_PACKAGE_PACKAGE_SUPPLEMENT_H_
