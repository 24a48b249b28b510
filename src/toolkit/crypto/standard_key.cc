#include <algorithm>
#include <array>

#include "toolkit/crypto/little_endian.h"
#include "toolkit/crypto/package_key.h"

namespace fi::crypto {
namespace {

// The key follows from the hash as in the CryptDeriveKey function of Windows: the hash is laid over
// a block of one byte, and that block is hashed.
bool HashOverBlock(Hasher& hasher, uint8_t fill, Bytes hash, HashValue* value) {
  constexpr size_t kBlock = 64;
  SecretBytes<kBlock> block;
  std::fill_n(block.data(), kBlock, fill);
  block.SetSize(kBlock);
  for (size_t i = 0; i < hash.size(); ++i) block.data()[i] ^= hash[i];
  return hasher.Hash({block.view()}, value);
}

bool DeriveKey(Hasher& hasher, const StandardInfo& info, const DecryptionLimits& limits,
               Bytes password, SecretBytes<kMaxKey>* key) {
  HashValue hash;
  if (!SpinHash(hasher, info.salt, password, limits.standardSpins, &hash)) return false;
  if (!hasher.Hash({hash.view(), StoreLE32(0)}, &hash)) return false;
  HashValue first;
  HashValue second;
  if (!HashOverBlock(hasher, 0x36, hash.view(), &first)) return false;
  if (!HashOverBlock(hasher, 0x5C, hash.view(), &second)) return false;
  const size_t fromFirst = std::min(info.keySize, first.size());
  return key->Append(first.view().first(fromFirst)) &&
         key->Append(second.view().first(info.keySize - fromFirst));
}

}  // namespace

bool SpinHash(Hasher& hasher, Bytes salt, Bytes password, uint32_t spins, HashValue* value) {
  if (!hasher.Hash({salt, password}, value)) return false;
  for (uint32_t round = 0; round < spins; ++round) {
    const std::array<uint8_t, 4> number = StoreLE32(round);
    if (!hasher.Hash({number, value->view()}, value)) return false;
  }
  return true;
}

Unlocked UnlockStandard(const StandardInfo& info, const DecryptionLimits& limits, Bytes password,
                        PackageKey* key) {
  key->mode = AesMode::kEcb;
  key->key.SetSize(0);
  Hasher hasher(HashAlgorithm::kSha1);
  if (!DeriveKey(hasher, info, limits, password, &key->key)) return Unlocked::kFailed;

  AesDecryptor aes(AesMode::kEcb, key->key.view());
  SecretBytes<kAesBlock> verifier;
  SecretBytes<32> expected;
  HashValue actual;
  if (!aes.Decrypt({}, info.encryptedVerifier, verifier.data()) ||
      !aes.Decrypt({}, info.encryptedVerifierHash, expected.data())) {
    return Unlocked::kFailed;
  }
  verifier.SetSize(kAesBlock);
  expected.SetSize(HashSize(HashAlgorithm::kSha1));
  if (!hasher.Hash({verifier.view()}, &actual)) return Unlocked::kFailed;
  return EqualSecrets(actual.view(), expected.view()) ? Unlocked::kYes : Unlocked::kWrongPassword;
}

}  // namespace fi::crypto
