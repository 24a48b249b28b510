#include "platform/office_password.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <variant>

#include "platform/io.h"
#include "platform/work.h"
#include "toolkit/crypto/encryption_info.h"
#include "toolkit/crypto/little_endian.h"
#include "toolkit/crypto/package_key.h"
#include "toolkit/crypto/rc4.h"

namespace fi {
namespace {

using crypto::Bytes;
using crypto::HashAlgorithm;
using crypto::Hasher;
using crypto::HashValue;
using crypto::LoadLE;
using crypto::Password;
using crypto::Rc4;
using crypto::Unlocked;

constexpr std::string_view kPasswords[] = {"VelvetSweatshop", ""};

// The key and the verifier that the XOR scheme derives from each of them (2.3.7.1 and 2.3.7.2), one
// behind the other.
constexpr uint32_t kXorValues[] = {0x9A0AB359, 0xCE4B0000};

// Tries each password; `unlock` is given it in UTF-16.
template <class Unlock>
OfficeOpening TryPasswords(Unlock&& unlock) {
  const crypto::ErrorMark mark;
  for (const std::string_view text : kPasswords) {
    Password password;
    if (!crypto::EncodePassword(text, &password)) return OfficeOpening::kUnknown;
    const Unlocked unlocked = unlock(password.view());
    if (unlocked == Unlocked::kYes) return OfficeOpening::kWithoutPassword;
    if (unlocked == Unlocked::kFailed) return OfficeOpening::kUnknown;
  }
  return OfficeOpening::kWithPassword;
}

// Whether a key decrypts the verifier and its hash, which both schemes of RC4 keep so.
Unlocked Verify(Hasher& hasher, Bytes key, Bytes verifier, Bytes verifierHash) {
  constexpr size_t kVerifier = 16;
  std::array<uint8_t, kVerifier> plain;
  std::array<uint8_t, crypto::kMaxHash> expected;
  if (verifier.size() != plain.size() || verifierHash.size() > expected.size()) {
    return Unlocked::kFailed;
  }
  std::copy(verifier.begin(), verifier.end(), plain.begin());
  std::copy(verifierHash.begin(), verifierHash.end(), expected.begin());
  Rc4 rc4(key);
  rc4.Apply(plain.data(), plain.size());
  rc4.Apply(expected.data(), verifierHash.size());
  HashValue hash;
  if (!hasher.Hash({plain}, &hash) || hash.size() > verifierHash.size()) return Unlocked::kFailed;
  return std::ranges::equal(hash.view(), Bytes(expected).first(hash.size()))
             ? Unlocked::kYes
             : Unlocked::kWrongPassword;
}

// RC4 with a key of 40 bits (2.3.6): a salt, the verifier and its hash behind the version.
Unlocked UnlockBinary(Bytes header, Bytes password) {
  constexpr size_t kPart = 16;
  constexpr size_t kSaltAt = 4;
  constexpr size_t kKept = 5;
  constexpr int kRepeats = 16;
  if (header.size() < kSaltAt + 3 * kPart) return Unlocked::kFailed;
  const Bytes salt = header.subspan(kSaltAt, kPart);
  Hasher md5(HashAlgorithm::kMd5);
  HashValue hash;
  if (!md5.Hash({password}, &hash)) return Unlocked::kFailed;
  std::array<uint8_t, kRepeats*(kKept + kPart)> block;
  for (size_t at = 0; at < block.size(); at += kKept + kPart) {
    std::memcpy(block.data() + at, hash.data(), kKept);
    std::memcpy(block.data() + at + kKept, salt.data(), kPart);
  }
  const std::array<uint8_t, 4> firstBlock{};
  if (!md5.Hash({block}, &hash) || !md5.Hash({hash.view().first(kKept), firstBlock}, &hash)) {
    return Unlocked::kFailed;
  }
  return Verify(md5, hash.view(), header.subspan(kSaltAt + kPart, kPart),
                header.subspan(kSaltAt + 2 * kPart, kPart));
}

// RC4 of the CryptoAPI (2.3.5): flags and the size of a header behind the version, that header, and
// the verifier.
struct CryptoApiHeader {
  HashAlgorithm hash = HashAlgorithm::kSha1;
  size_t keySize = 0;  // bytes
  Bytes salt;
  Bytes verifier;
  Bytes verifierHash;
};

bool ReadCryptoApiHeader(Bytes bytes, CryptoApiHeader* header) {
  constexpr size_t kFixed = 12;  // version, flags and size
  constexpr size_t kLeastHeader = 32;
  constexpr size_t kHashAlgorithmAt = 12;
  constexpr size_t kKeyBitsAt = 16;
  constexpr uint64_t kMd5 = 0x8003;
  constexpr size_t kPart = 16;
  constexpr size_t kVerifierHashAt = 4 + 2 * kPart + 4;
  if (bytes.size() < kFixed) return false;
  const uint64_t size = LoadLE<4>(bytes, 8);
  const Bytes rest = bytes.subspan(kFixed);
  if (size < kLeastHeader || size > rest.size()) return false;
  header->hash =
      LoadLE<4>(rest, kHashAlgorithmAt) == kMd5 ? HashAlgorithm::kMd5 : HashAlgorithm::kSha1;
  const uint64_t bits = LoadLE<4>(rest, kKeyBitsAt);
  header->keySize = bits == 0 ? 5 : static_cast<size_t>(bits / 8);  // 0 stands for 40 bits
  const size_t hashSize = crypto::HashSize(header->hash);
  const Bytes verifier = rest.subspan(static_cast<size_t>(size));
  if (header->keySize < 5 || header->keySize > kPart ||
      verifier.size() < kVerifierHashAt + hashSize) {
    return false;
  }
  header->salt = verifier.subspan(4, kPart);
  header->verifier = verifier.subspan(4 + kPart, kPart);
  header->verifierHash = verifier.subspan(kVerifierHashAt, hashSize);
  return true;
}

Unlocked UnlockCryptoApi(Bytes bytes, Bytes password) {
  constexpr size_t kFilledKey = 16;  // a key of 40 bits is filled up with zeros
  CryptoApiHeader header;
  if (!ReadCryptoApiHeader(bytes, &header)) return Unlocked::kFailed;
  Hasher hasher(header.hash);
  HashValue hash;
  const std::array<uint8_t, 4> firstBlock{};
  if (!hasher.Hash({header.salt, password}, &hash) ||
      !hasher.Hash({hash.view(), firstBlock}, &hash)) {
    return Unlocked::kFailed;
  }
  std::array<uint8_t, kFilledKey> key{};
  std::copy_n(hash.data(), header.keySize, key.begin());
  const size_t size = header.keySize == 5 ? key.size() : header.keySize;
  return Verify(hasher, {key.data(), size}, header.verifier, header.verifierHash);
}

bool SpendRounds(IOHandle* document, uint64_t rounds) {
  Work* const work = WorkOf(document);
  return work == nullptr || work->SpendKeyRounds(rounds);
}

}  // namespace

OfficeOpening HowHeaderOpens(std::span<const uint8_t> header) {
  if (header.size() < 4) return OfficeOpening::kUnknown;
  const bool isBinary = LoadLE<2>(header, 0) == 1;
  return TryPasswords([&](Bytes password) {
    return isBinary ? UnlockBinary(header, password) : UnlockCryptoApi(header, password);
  });
}

OfficeOpening HowWorkbookOpens(std::span<const uint8_t> filePass) {
  constexpr size_t kXorSize =
      4;  // all that the record has before Excel 97; else a type comes first
  if (filePass.size() < kXorSize) return OfficeOpening::kUnknown;
  const bool isOld = filePass.size() == kXorSize;
  if (!isOld && LoadLE<2>(filePass, 0) != 0) return HowHeaderOpens(filePass.subspan(2));
  const size_t at = isOld ? 0 : 2;
  if (filePass.size() < at + kXorSize) return OfficeOpening::kUnknown;
  const auto values = static_cast<uint32_t>(LoadLE<4>(filePass, at));
  return std::ranges::find(kXorValues, values) != std::end(kXorValues)
             ? OfficeOpening::kWithoutPassword
             : OfficeOpening::kWithPassword;
}

OfficeOpening HowPackageOpens(IOHandle* document) {
  constexpr size_t kMostInfo = 16 * 1024;
  constexpr size_t kAlgorithmAt = 20;
  constexpr uint64_t kRc4 = 0x6801;
  const IOChildSource source{document, "EncryptionInfo"};
  IOHandle* child = nullptr;
  if (document->operations->open(document, &child, kIoSourceStorageStream, &source, 1) != 0) {
    return OfficeOpening::kUnknown;
  }
  const io::OwnedHandle stream(child);
  const std::unique_ptr<uint8_t[]> room(new (std::nothrow) uint8_t[kMostInfo]);
  if (room == nullptr) return OfficeOpening::kUnknown;
  const Bytes bytes(room.get(), io::ReadFully(stream.get(), room.get(), kMostInfo));
  if (bytes.size() >= kAlgorithmAt + 4 && LoadLE<2>(bytes, 2) == 2 &&
      LoadLE<4>(bytes, kAlgorithmAt) == kRc4) {
    return HowHeaderOpens(bytes);
  }
  const crypto::DecryptionLimits limits;
  const crypto::EncryptionInfo info = crypto::ReadEncryptionInfo(bytes, limits);
  return TryPasswords([&](Bytes password) {
    crypto::PackageKey key;
    if (const auto* agile = std::get_if<crypto::AgileInfo>(&info)) {
      return SpendRounds(document, agile->spinCount) ? UnlockAgile(*agile, password, &key)
                                                     : Unlocked::kFailed;
    }
    if (const auto* standard = std::get_if<crypto::StandardInfo>(&info)) {
      return SpendRounds(document, limits.standardSpins)
                 ? UnlockStandard(*standard, limits, password, &key)
                 : Unlocked::kFailed;
    }
    return Unlocked::kFailed;
  });
}

}  // namespace fi
