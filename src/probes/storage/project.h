// Microsoft Project: the top-level storage is named with three blanks and a number that rises with
// the file format.
#ifndef FI_PROBES_STORAGE_PROJECT_H_
#define FI_PROBES_STORAGE_PROJECT_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// The version of the project, kFormatUnknown for a late one that no known version wrote, kNoMatch
// without such a storage.
FormatId ProbeNumberedStorages(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_STORAGE_PROJECT_H_
