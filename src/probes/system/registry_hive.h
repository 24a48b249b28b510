// Hives of the Windows registry: a header with two sequence numbers, which differ while a write is
// under way.
#ifndef FI_PROBES_SYSTEM_REGISTRY_HIVE_H_
#define FI_PROBES_SYSTEM_REGISTRY_HIVE_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatWindowsRegistryHive or kNoMatch.
FormatId RegistryHiveProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_SYSTEM_REGISTRY_HIVE_H_
