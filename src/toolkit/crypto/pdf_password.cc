// The empty user password of a PDF file: revisions 2 to 4 derive an RC4 key by MD5, 5 and 6 compare
// a salted hash.

#include "platform/pdf_password.h"

#include <algorithm>
#include <cstring>

#include "toolkit/crypto/rc4.h"
#include "toolkit/openssl/evp.h"

namespace fi {
namespace {

using crypto::Bytes;
using crypto::HashAlgorithm;
using crypto::Hasher;
using crypto::HashValue;
using crypto::Rc4;

// The bytes that fill up a password; the empty password is all of them.
constexpr std::array<uint8_t, 32> kPadding = {
    0x28, 0xBF, 0x4E, 0x5E, 0x4E, 0x75, 0x8A, 0x41, 0x64, 0x00, 0x4E, 0x56, 0xFF, 0xFA, 0x01, 0x08,
    0x2E, 0x2E, 0x00, 0xB6, 0xD0, 0x68, 0x3E, 0x80, 0x2F, 0x0C, 0xA9, 0xFE, 0x64, 0x53, 0x69, 0x7A};

constexpr size_t kMd5Size = 16;
constexpr size_t kOldStringSize = 32;  // O and U up to revision 4
constexpr size_t kHashSize = 32;       // of U since revision 5; two salts of 8 bytes follow

Bytes View(const std::array<uint8_t, PdfEncryption::kMaxString>& bytes, size_t size) {
  return {bytes.data(), std::min(size, bytes.size())};
}

PdfOpening Verdict(bool fits) {
  return fits ? PdfOpening::kWithoutPassword : PdfOpening::kWithPassword;
}

PdfOpening OldRevision(const PdfEncryption& e) {
  if (e.ownerSize < kOldStringSize || e.userSize < kMd5Size) return PdfOpening::kUnknown;
  const auto p = static_cast<uint32_t>(e.permissions);
  const uint8_t permissions[4] = {static_cast<uint8_t>(p), static_cast<uint8_t>(p >> 8),
                                  static_cast<uint8_t>(p >> 16), static_cast<uint8_t>(p >> 24)};
  constexpr uint8_t kClearMetadata[4] = {0xFF, 0xFF, 0xFF, 0xFF};
  const bool marksMetadata = e.revision >= 4 && !e.encryptsMetadata;
  const size_t keySize =
      e.revision == 2 ? 5 : static_cast<size_t>(std::clamp<int64_t>(e.length / 8, 5, kMd5Size));
  Hasher md5(HashAlgorithm::kMd5);
  HashValue key;
  const Bytes owner = View(e.owner, kOldStringSize);
  const Bytes id = View(e.fileId, e.fileIdSize);
  if (!md5.Hash({Bytes(kPadding), owner, Bytes(permissions), id,
                 Bytes(kClearMetadata, marksMetadata ? 4 : 0)},
                &key)) {
    return PdfOpening::kUnknown;
  }
  if (e.revision >= 3) {
    for (int round = 0; round < 50; ++round) {
      if (!md5.Hash({Bytes(key.data(), keySize)}, &key)) return PdfOpening::kUnknown;
    }
  }
  std::array<uint8_t, 32> expected = kPadding;
  if (e.revision == 2) {
    if (e.userSize < expected.size()) return PdfOpening::kUnknown;
    Rc4({key.data(), keySize}).Apply(expected.data(), expected.size());
    return Verdict(std::equal(expected.begin(), expected.end(), e.user.begin()));
  }
  HashValue check;
  if (!md5.Hash({Bytes(kPadding), id}, &check)) return PdfOpening::kUnknown;
  std::copy_n(check.data(), kMd5Size, expected.begin());
  for (uint8_t round = 0; round < 20; ++round) {
    std::array<uint8_t, kMd5Size> roundKey;
    for (size_t i = 0; i < keySize; ++i) roundKey[i] = key.data()[i] ^ round;
    Rc4({roundKey.data(), keySize}).Apply(expected.data(), kMd5Size);
  }
  return Verdict(std::equal(expected.begin(), expected.begin() + kMd5Size, e.user.begin()));
}

// The hash of revision 6 (ISO 32000-2, algorithm 2.B) of the empty password. False on failure.
bool HashOfRevision6(Bytes salt, HashValue* value) {
  constexpr size_t kRepeats = 64;
  constexpr int kMinRounds = 64;
  constexpr int kMaxRounds = 64 + 256;  // the last byte ends it by then
  Hasher sha256(HashAlgorithm::kSha256);
  Hasher sha384(HashAlgorithm::kSha384);
  Hasher sha512(HashAlgorithm::kSha512);
  if (!sha256.Hash({salt}, value)) return false;
  size_t size = 32;
  std::array<uint8_t, kRepeats * 64> block;
  for (int round = 0; round < kMaxRounds; ++round) {
    for (size_t i = 0; i < kRepeats; ++i) {
      std::memcpy(block.data() + i * size, value->data(), size);
    }
    const size_t length = kRepeats * size;
    if (!crypto::EncryptAes128Cbc({value->data(), 16}, {value->data() + 16, 16},
                                  {block.data(), length}, block.data())) {
      return false;
    }
    uint32_t sum = 0;
    for (size_t i = 0; i < 16; ++i) sum += block[i];
    const Bytes encrypted(block.data(), length);
    bool hashed = false;
    switch (sum % 3) {
      case 0:
        size = 32;
        hashed = sha256.Hash({encrypted}, value);
        break;
      case 1:
        size = 48;
        hashed = sha384.Hash({encrypted}, value);
        break;
      default:
        size = 64;
        hashed = sha512.Hash({encrypted}, value);
        break;
    }
    if (!hashed) return false;
    if (round + 1 >= kMinRounds && block[length - 1] <= round + 1 - 32) return true;
  }
  return false;
}

PdfOpening NewRevision(const PdfEncryption& e) {
  constexpr size_t kSaltSize = 8;
  if (e.userSize < kHashSize + kSaltSize) return PdfOpening::kUnknown;
  const Bytes salt(e.user.data() + kHashSize, kSaltSize);
  HashValue value;
  const bool hashed = e.revision == 5 ? Hasher(HashAlgorithm::kSha256).Hash({salt}, &value)
                                      : HashOfRevision6(salt, &value);
  if (!hashed) return PdfOpening::kUnknown;
  return Verdict(std::equal(e.user.begin(), e.user.begin() + kHashSize, value.data()));
}

}  // namespace

PdfOpening HowPdfOpens(const PdfEncryption& encryption) {
  const crypto::ErrorMark mark;
  if (encryption.revision >= 2 && encryption.revision <= 4) return OldRevision(encryption);
  if (encryption.revision == 5 || encryption.revision == 6) return NewRevision(encryption);
  return PdfOpening::kUnknown;
}

}  // namespace fi
