// The password verifier of an encrypted iWork package, the member ".iwpv2", little-endian:
//
//   0  version, 2     2  format, 1     4  rounds     8  salt of 16 bytes     24  IV of 16 bytes
//   40 encrypted: 32 random bytes, and their SHA-256
//
// The key, PBKDF2 with HMAC-SHA1, is that of the package. It is AES-128 in CBC mode.
#ifndef FI_TOOLKIT_CRYPTO_IWORK_VERIFIER_H_
#define FI_TOOLKIT_CRYPTO_IWORK_VERIFIER_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "toolkit/crypto/limits.h"
#include "toolkit/crypto/password.h"
#include "toolkit/openssl/evp.h"
#include "toolkit/openssl/secret_bytes.h"

namespace fi::crypto {

constexpr size_t kIworkKey = 16;
constexpr size_t kIworkVerifier = 104;  // bytes of the member

struct IworkVerifier {
  uint32_t rounds = 0;
  std::array<uint8_t, 16> salt{};
  std::array<uint8_t, kAesBlock> iv{};
  std::array<uint8_t, 64> encrypted{};
};

// None when the member has another size, version or format, or asks for rounds beyond the limits.
std::optional<IworkVerifier> ReadIworkVerifier(Bytes member, const DecryptionLimits& limits);

// `password` is UTF-8. `*key` is usable only after kYes.
Unlocked UnlockIwork(const IworkVerifier& verifier, Bytes password, SecretBytes<kIworkKey>* key);

}  // namespace fi::crypto

#endif  // FI_TOOLKIT_CRYPTO_IWORK_VERIFIER_H_
