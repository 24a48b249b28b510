// The stream "EncryptionInfo" of a compound file that holds an encrypted package: it tells how the
// key follows from the password. Four bytes of version come first. Minor version 2 is the standard
// scheme, a record of numbers; 4.4 is the agile scheme, an XML document. ECMA-376 and
// [MS-OFFCRYPTO] describe both.
#ifndef FI_TOOLKIT_CRYPTO_ENCRYPTION_INFO_H_
#define FI_TOOLKIT_CRYPTO_ENCRYPTION_INFO_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <variant>

#include "toolkit/crypto/limits.h"
#include "toolkit/openssl/evp.h"

namespace fi::crypto {

// Bytes of a descriptor. The longest that a scheme asks for is a hash value of 64 bytes.
struct Field {
  std::array<uint8_t, 64> bytes{};
  size_t size = 0;

  Bytes view() const { return Bytes(bytes).first(size); }
};

// AES in ECB mode, SHA-1.
struct StandardInfo {
  size_t keySize = 0;  // in bytes: 16, 24 or 32
  std::array<uint8_t, 16> salt{};
  std::array<uint8_t, 16> encryptedVerifier{};
  std::array<uint8_t, 32> encryptedVerifierHash{};  // 20 bytes, filled up to whole blocks
};

// What keyData and encryptedKey have in common: AES in CBC mode with blocks of 16 bytes.
struct AgileCipher {
  size_t keySize = 0;  // in bytes: 16, 24 or 32
  HashAlgorithm hash = HashAlgorithm::kSha1;
  Field salt;
};

struct AgileInfo {
  AgileCipher package;
  AgileCipher password;
  uint32_t spinCount = 0;
  Field encryptedVerifier;      // the verifier is as long as the password's salt
  Field encryptedVerifierHash;  // at least a hash value
  Field encryptedKey;           // at least package.keySize bytes
  bool hasIntegrity = false;
  Field encryptedHmacKey;    // at least a hash value, as is the next
  Field encryptedHmacValue;  // of the whole stream "EncryptedPackage"
};

using EncryptionInfo = std::variant<std::monostate, StandardInfo, AgileInfo>;

// Reads the contents of the stream. std::monostate when they are damaged, when they ask for more
// than the limits allow, and when the scheme is none of the two: RC4, extensible encryption.
EncryptionInfo ReadEncryptionInfo(Bytes stream, const DecryptionLimits& limits);

// The XML document of the agile scheme. False when something in it is missing, unknown or does not
// fit together.
bool ReadAgileDescriptor(Bytes xml, const DecryptionLimits& limits, AgileInfo* info);

}  // namespace fi::crypto

#endif  // FI_TOOLKIT_CRYPTO_ENCRYPTION_INFO_H_
