#include <algorithm>
#include <array>

#include "toolkit/crypto/package_key.h"

namespace fi::crypto {
namespace {

// Each value of the descriptor has a key or an initialisation vector of its own, told apart by
// eight fixed bytes that are hashed with the secret.
using BlockKey = std::array<uint8_t, 8>;
constexpr BlockKey kVerifierKey = {0xFE, 0xA7, 0xD2, 0x76, 0x3B, 0x4B, 0x9E, 0x79};
constexpr BlockKey kVerifierHashKey = {0xD7, 0xAA, 0x0F, 0x6D, 0x30, 0x61, 0x34, 0x4E};
constexpr BlockKey kPackageKeyKey = {0x14, 0x6E, 0x0B, 0xE7, 0xAB, 0xAC, 0xD0, 0xD6};
constexpr BlockKey kHmacKeyVector = {0x5F, 0xB2, 0xAD, 0x01, 0x0C, 0xB9, 0xE1, 0xF6};
constexpr BlockKey kHmacValueVector = {0xA0, 0x67, 0x7F, 0x02, 0xB2, 0x2C, 0x84, 0x33};

// What is too short for a key or a vector is filled up with this.
constexpr uint8_t kFill = 0x36;

template <size_t kCapacity>
void TakeFilled(Bytes from, size_t size, SecretBytes<kCapacity>* out) {
  std::fill_n(out->data(), size, kFill);
  std::copy_n(from.begin(), std::min(size, from.size()), out->data());
  out->SetSize(size);
}

// The decrypted values are secrets of up to 64 bytes, as long as the field that held them.
bool DecryptField(AesMode mode, Bytes key, Bytes iv, const Field& field, HashValue* out) {
  AesDecryptor aes(mode, key);
  if (!aes.Decrypt(iv, field.view(), out->data())) return false;
  out->SetSize(field.size);
  return true;
}

// The values that the password unlocks.
class PasswordValues {
 public:
  explicit PasswordValues(const AgileCipher& cipher) : cipher_(cipher), hasher_(cipher.hash) {
    TakeFilled(cipher.salt.view(), kAesBlock, &iv_);
  }

  bool SetPassword(Bytes password, uint32_t spins) {
    return SpinHash(hasher_, cipher_.salt.view(), password, spins, &secret_);
  }

  bool Decrypt(const Field& field, const BlockKey& blockKey, HashValue* out) {
    HashValue hash;
    if (!hasher_.Hash({secret_.view(), blockKey}, &hash)) return false;
    SecretBytes<kMaxKey> key;
    TakeFilled(hash.view(), cipher_.keySize, &key);
    return DecryptField(AesMode::kCbc, key.view(), iv_.view(), field, out);
  }

  // Whether the hash of `verifier` is what `expected` begins with.
  bool Matches(Bytes verifier, Bytes expected, bool* matches) {
    HashValue hash;
    if (!hasher_.Hash({verifier}, &hash)) return false;
    *matches = EqualSecrets(hash.view(), expected.first(hash.size()));
    return true;
  }

 private:
  const AgileCipher& cipher_;
  Hasher hasher_;
  HashValue secret_;
  SecretBytes<kAesBlock> iv_;
};

bool DecryptIntegrity(const AgileInfo& info, PackageKey* key) {
  Hasher hasher(info.package.hash);
  const auto decrypt = [&](const Field& field, const BlockKey& blockKey, HashValue* out) {
    HashValue hash;
    if (!hasher.Hash({info.package.salt.view(), blockKey}, &hash)) return false;
    const Bytes iv = hash.view().first(kAesBlock);
    if (!DecryptField(AesMode::kCbc, key->key.view(), iv, field, out)) return false;
    out->SetSize(HashSize(info.package.hash));
    return true;
  };
  return decrypt(info.encryptedHmacKey, kHmacKeyVector, &key->hmacKey) &&
         decrypt(info.encryptedHmacValue, kHmacValueVector, &key->hmacValue);
}

}  // namespace

Unlocked UnlockAgile(const AgileInfo& info, Bytes password, PackageKey* key) {
  PasswordValues values(info.password);
  HashValue verifier;
  HashValue verifierHash;
  if (!values.SetPassword(password, info.spinCount) ||
      !values.Decrypt(info.encryptedVerifier, kVerifierKey, &verifier) ||
      !values.Decrypt(info.encryptedVerifierHash, kVerifierHashKey, &verifierHash)) {
    return Unlocked::kFailed;
  }
  // Behind the verifier the last block is filled up.
  verifier.SetSize(info.password.salt.size);
  bool matches = false;
  if (!values.Matches(verifier.view(), verifierHash.view(), &matches)) return Unlocked::kFailed;
  if (!matches) return Unlocked::kWrongPassword;

  HashValue packageKey;
  if (!values.Decrypt(info.encryptedKey, kPackageKeyKey, &packageKey)) return Unlocked::kFailed;
  key->mode = AesMode::kCbc;
  key->key.SetSize(0);
  (void)key->key.Append(packageKey.view().first(info.package.keySize));
  key->hash = info.package.hash;
  key->salt = info.package.salt;
  key->hasIntegrity = info.hasIntegrity;
  if (info.hasIntegrity && !DecryptIntegrity(info, key)) return Unlocked::kFailed;
  return Unlocked::kYes;
}

}  // namespace fi::crypto
