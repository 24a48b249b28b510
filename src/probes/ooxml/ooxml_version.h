// The version of the application that wrote an Office Open XML package, as part of the format.
#ifndef FI_PROBES_OOXML_OOXML_VERSION_H_
#define FI_PROBES_OOXML_OOXML_VERSION_H_

#include <cstdint>

#include "formatid/formatid.h"

namespace fi {

// Whether the format is told apart by version.
bool HasVersions(FormatId id);

// The format that `id` becomes when an application of major version `appMajor` wrote it: 14 is
// 2010, 15 is 2013, 16 and above are 2016 or later. `id` itself for older ones and for formats that
// are not told apart. `strict`: the package keeps to the strict form of the standard.
FormatId RefineByVersion(FormatId id, uint32_t appMajor, bool strict);

}  // namespace fi

#endif  // FI_PROBES_OOXML_OOXML_VERSION_H_
