// Hives of the Windows registry: a header with two sequence numbers, which differ while a write is
// under way.
#ifndef FI_PROBES_CONTENT_REGISTRY_HIVE_H_
#define FI_PROBES_CONTENT_REGISTRY_HIVE_H_

#include "engine/id_stream.h"
#include "formatid/formatid.h"

namespace fi {

// kFormatWindowsRegistryHive or kNoMatch.
FormatId RegistryHiveProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_CONTENT_REGISTRY_HIVE_H_
