// Compound documents beyond those that the signatures and the classifier know: told by the class
// identifier of the storage, else by a stream that only one program writes.
#ifndef FI_PROBES_STORAGE_UNKNOWN_STORAGES_H_
#define FI_PROBES_STORAGE_UNKNOWN_STORAGES_H_

#include <array>
#include <cstdint>

#include "engine/id_stream.h"
#include "formatid/formatid.h"

namespace fi {

// One of 3260 to 3274, or kNoMatch. `classId` is in GUID memory layout. The stream is not moved.
FormatId ProbeUnknownStorage(IdentificationStream* stream, const std::array<uint8_t, 16>& classId);

}  // namespace fi

#endif  // FI_PROBES_STORAGE_UNKNOWN_STORAGES_H_
