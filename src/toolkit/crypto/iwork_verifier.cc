#include "toolkit/crypto/iwork_verifier.h"

#include <algorithm>

#include "toolkit/crypto/little_endian.h"

namespace fi::crypto {
namespace {

constexpr uint64_t kVersion = 2;
constexpr uint64_t kFormat = 1;
constexpr size_t kRandom = 32;

}  // namespace

std::optional<IworkVerifier> ReadIworkVerifier(Bytes member, const DecryptionLimits& limits) {
  if (member.size() != kIworkVerifier) return std::nullopt;
  if (LoadLE<2>(member, 0) != kVersion || LoadLE<2>(member, 2) != kFormat) return std::nullopt;
  IworkVerifier verifier;
  verifier.rounds = static_cast<uint32_t>(LoadLE<4>(member, 4));
  if (verifier.rounds == 0 || verifier.rounds > limits.mostSpins) return std::nullopt;
  std::ranges::copy(member.subspan(8, verifier.salt.size()), verifier.salt.begin());
  std::ranges::copy(member.subspan(24, verifier.iv.size()), verifier.iv.begin());
  std::ranges::copy(member.subspan(40), verifier.encrypted.begin());
  return verifier;
}

Unlocked UnlockIwork(const IworkVerifier& verifier, Bytes password, SecretBytes<kIworkKey>* key) {
  const ErrorMark mark;
  if (!DeriveKey(password, verifier.salt, verifier.rounds, key->data(), kIworkKey)) {
    return Unlocked::kFailed;
  }
  key->SetSize(kIworkKey);
  AesDecryptor aes(AesMode::kCbc, key->view());
  Hasher hasher(HashAlgorithm::kSha256);
  SecretBytes<sizeof(verifier.encrypted)> decrypted;
  HashValue hash;
  if (!aes.Decrypt(verifier.iv, verifier.encrypted, decrypted.data())) return Unlocked::kFailed;
  decrypted.SetSize(verifier.encrypted.size());
  if (!hasher.Hash({decrypted.view().first(kRandom)}, &hash)) return Unlocked::kFailed;
  return EqualSecrets(hash.view(), decrypted.view().subspan(kRandom)) ? Unlocked::kYes
                                                                      : Unlocked::kWrongPassword;
}

}  // namespace fi::crypto
