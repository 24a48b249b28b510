// What one identification may cost by default, where a caller sets no limits of its own. Counts,
// never times, so that an answer does not depend on the machine.
#ifndef FI_PLATFORM_LIMITS_H_
#define FI_PLATFORM_LIMITS_H_

#include <cstdint>

namespace fi {

// Of the source: bytes delivered, and calls to read.
inline constexpr uint64_t kDefaultBytesRead = uint64_t{64} << 20;
inline constexpr uint64_t kDefaultReads = 32'768;

// Bytes that inflating and decompressing yields. Packed bytes that yield less than their own number
// count sixteenfold, since they cost as much.
inline constexpr uint64_t kDefaultBytesInflated = uint64_t{32} << 20;

// Reads of what the source contains: streams, members, decrypted views; sectors that are followed
// and entries that are looked at.
inline constexpr uint64_t kDefaultSteps = 1'000'000;

// Bytes of memory that grow with the file, held at once.
inline constexpr uint64_t kDefaultMemory = uint64_t{24} << 20;

// Rounds of key derivation of all passwords together. Office and iWork write 100,000 a password.
inline constexpr uint64_t kDefaultKeyRounds = 1'000'000;

// Containers in containers.
inline constexpr uint64_t kDefaultDepth = 8;

}  // namespace fi

#endif  // FI_PLATFORM_LIMITS_H_
