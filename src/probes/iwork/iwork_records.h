// The records of a decompressed iWork archive. Each is the length of an index (a varint), the index
// (a TSP.ArchiveInfo, which lists messages with type and length), and the messages one behind the
// other. The type of the document's root names the application.
#ifndef FI_PROBES_IWORK_IWORK_RECORDS_H_
#define FI_PROBES_IWORK_IWORK_RECORDS_H_

#include <cstddef>
#include <cstdint>
#include <span>

#include "formatid/formatid.h"
#include "platform/iwork_module.h"

namespace fi {

// An application, by the number of a message that only its documents have.
struct IworkApplication {
  uint32_t messageType;
  FormatId id;
  FormatId encryptedId;
};

// Bytes of one index, which bounds the memory that its messages take: applications write some
// hundred, and eight more for each object that a message refers to.
inline constexpr size_t kMaxIworkIndex = size_t{1} << 20;

// Bytes of all indexes together, which bounds the time: a message of nothing takes two bytes.
inline constexpr size_t kMaxIworkIndexes = size_t{8} << 20;

// The application of the first message that is known; null when there is none. The walk ends where
// a length or an index is damaged, and at the limits.
const IworkApplication* FindIworkApplication(std::span<const uint8_t> archive,
                                             const IworkModule& module);

}  // namespace fi

#endif  // FI_PROBES_IWORK_IWORK_RECORDS_H_
