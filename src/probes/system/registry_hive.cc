#include "probes/system/registry_hive.h"

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {

FormatId RegistryHiveProbe(IdentificationStream* stream) {
  const FileBytes<12> header(stream, 0);
  if (header.size() < 12 || !header.Holds(0, "regf")) return kNoMatch;
  const uint32_t ahead = header.DwordLE(4) - header.DwordLE(8);  // modulo 2^32
  return ahead + 1 <= 2 ? kFormatWindowsRegistryHive : kNoMatch;
}

}  // namespace fi
