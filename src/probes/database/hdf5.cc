#include "probes/database/hdf5.h"

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {

FormatId Hdf5Probe(IdentificationStream* stream) {
  constexpr int64_t kPlaces[] = {0, 512, 1024, 2048};
  for (const int64_t place : kPlaces) {
    if (FileBytes<8>(stream, place).Holds(0, "\x89HDF\r\n\x1A\n")) return kFormatHdf5;
  }
  return kNoMatch;
}

}  // namespace fi
