// What the decryption of a package may cost. Tests and fuzzers lower the numbers.
#ifndef FI_TOOLKIT_CRYPTO_LIMITS_H_
#define FI_TOOLKIT_CRYPTO_LIMITS_H_

#include <cstddef>
#include <cstdint>

#include "platform/work.h"

namespace fi::crypto {

// Views inside views.
constexpr uint32_t kMaxViewDepth = 4;

// Passwords that the host is asked for.
constexpr uint32_t kMaxTries = 3;

// The stream "EncryptionInfo". Office writes about 1 KB, of XML at most.
constexpr size_t kMaxEncryptionInfo = size_t{64} * 1024;

// A member of an iWork package in bytes: the largest archive that is decompressed, if its blocks
// could not be compressed.
constexpr uint64_t kMaxIworkMember = uint64_t{65} * 1024 * 1024;

struct DecryptionLimits {
  // What the decryption counts for; null: nothing.
  Work* work = nullptr;
  // Rounds of the password hash that an agile descriptor or an iWork verifier may ask for. Office
  // and iWork write 100,000; a round takes less than a microsecond, and there are up to three
  // tries.
  uint32_t mostSpins = 10'000'000;
  // Rounds of the standard scheme, which no file can change.
  uint32_t standardSpins = 50'000;
  // A decrypted package up to this size in bytes is kept in memory, a larger one in a temporary
  // file. At most kMaxPlaintextMemory.
  uint64_t mostMemory = uint64_t{32} * 1024 * 1024;
  // The largest decrypted package in bytes.
  uint64_t mostPlaintext = uint64_t{4} * 1024 * 1024 * 1024;
};

// Whether a key may be derived by that many rounds.
inline bool AllowsRounds(const DecryptionLimits& limits, uint64_t rounds) {
  return limits.work == nullptr || limits.work->SpendKeyRounds(rounds);
}

// Notes what failed without a fault of the document: memory was not to be had.
inline bool CryptoFailed(const DecryptionLimits& limits) {
  if (limits.work != nullptr) limits.work->noMemory = true;
  return false;
}

constexpr uint64_t kMaxPlaintextMemory = DecryptionLimits{}.mostMemory;

}  // namespace fi::crypto

#endif  // FI_TOOLKIT_CRYPTO_LIMITS_H_
