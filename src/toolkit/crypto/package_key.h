// From a password to the key of the package. The verifier of the descriptor tells whether the
// password fits before anything of the package is read.
#ifndef FI_TOOLKIT_CRYPTO_PACKAGE_KEY_H_
#define FI_TOOLKIT_CRYPTO_PACKAGE_KEY_H_

#include <cstddef>
#include <cstdint>

#include "toolkit/crypto/encryption_info.h"
#include "toolkit/crypto/limits.h"
#include "toolkit/crypto/password.h"
#include "toolkit/openssl/evp.h"
#include "toolkit/openssl/secret_bytes.h"

namespace fi::crypto {

// All that is needed to decrypt the stream "EncryptedPackage".
struct PackageKey {
  AesMode mode = AesMode::kEcb;
  SecretBytes<kMaxKey> key;
  // Of the agile scheme only.
  HashAlgorithm hash = HashAlgorithm::kSha1;
  Field salt;
  bool hasIntegrity = false;
  HashValue hmacKey;
  HashValue hmacValue;
};

// `password` is UTF-16LE without a terminator. `*key` is usable only after kYes.
Unlocked UnlockStandard(const StandardInfo& info, const DecryptionLimits& limits, Bytes password,
                        PackageKey* key);
Unlocked UnlockAgile(const AgileInfo& info, Bytes password, PackageKey* key);

// What both schemes begin with: the hash of salt and password, hashed `spins` times more, each time
// behind the number of the round.
bool SpinHash(Hasher& hasher, Bytes salt, Bytes password, uint32_t spins, HashValue* value);

}  // namespace fi::crypto

#endif  // FI_TOOLKIT_CRYPTO_PACKAGE_KEY_H_
