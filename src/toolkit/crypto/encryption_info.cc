#include "toolkit/crypto/encryption_info.h"

#include <algorithm>
#include <optional>

#include "toolkit/crypto/little_endian.h"

namespace fi::crypto {
namespace {

constexpr size_t kVersionSize = 4;
constexpr uint64_t kStandardMinor = 2;
constexpr uint64_t kAgileMajor = 4;
constexpr uint64_t kAgileMinor = 4;

// Behind the version: flags, size of the header, the header, the verifier.
constexpr size_t kHeaderSizeAt = kVersionSize + 4;
constexpr size_t kHeaderAt = kHeaderSizeAt + 4;
// The fixed part of the header, in front of the name of a provider.
constexpr size_t kMinHeader = 32;
constexpr size_t kAlgorithmAt = 8;
constexpr size_t kHashAlgorithmAt = 12;
constexpr size_t kKeyBitsAt = 16;
// Salt size, salt, verifier, hash size, hash.
constexpr size_t kSaltAt = 4;
constexpr size_t kVerifierAt = kSaltAt + 16;
constexpr size_t kHashSizeAt = kVerifierAt + 16;
constexpr size_t kHashAt = kHashSizeAt + 4;
constexpr size_t kVerifierSize = kHashAt + 32;

constexpr uint64_t kFlagAes = 0x20;
constexpr uint64_t kSha1 = 0x8004;

// Bytes of the key; nothing when the header asks for another cipher, RC4 above all. An algorithm
// of 0 leaves the choice to the flags; where it is named, some writers leave the flags empty. A
// hash of 0 means SHA-1.
std::optional<size_t> KeySize(Bytes header) {
  const uint64_t hash = LoadLE<4>(header, kHashAlgorithmAt);
  if (hash != 0 && hash != kSha1) return std::nullopt;
  const uint64_t bits = LoadLE<4>(header, kKeyBitsAt);
  size_t size = 0;
  switch (LoadLE<4>(header, kAlgorithmAt)) {
    case 0:
      if ((LoadLE<4>(header, 0) & kFlagAes) == 0) return std::nullopt;
      size = bits == 192 || bits == 256 ? static_cast<size_t>(bits) / 8 : 16;
      break;
    case 0x660E:
      size = 16;
      break;
    case 0x660F:
      size = 24;
      break;
    case 0x6610:
      size = 32;
      break;
    default:
      return std::nullopt;
  }
  if (bits != 0 && bits != size * 8) return std::nullopt;
  return size;
}

template <size_t kCount>
void CopyOut(Bytes bytes, size_t offset, std::array<uint8_t, kCount>* out) {
  const Bytes part = bytes.subspan(offset, kCount);
  std::copy(part.begin(), part.end(), out->begin());
}

EncryptionInfo ReadStandard(Bytes stream) {
  if (stream.size() < kHeaderAt) return {};
  const uint64_t headerSize = LoadLE<4>(stream, kHeaderSizeAt);
  const Bytes rest = stream.subspan(kHeaderAt);
  if (headerSize < kMinHeader || headerSize > rest.size()) return {};
  const Bytes header = rest.first(static_cast<size_t>(headerSize));
  const Bytes verifier = rest.subspan(header.size());
  if (verifier.size() < kVerifierSize) return {};
  const std::optional<size_t> keySize = KeySize(header);
  if (!keySize.has_value() || LoadLE<4>(verifier, 0) != 16) return {};
  if (LoadLE<4>(verifier, kHashSizeAt) != HashSize(HashAlgorithm::kSha1)) return {};
  StandardInfo info;
  info.keySize = *keySize;
  CopyOut(verifier, kSaltAt, &info.salt);
  CopyOut(verifier, kVerifierAt, &info.encryptedVerifier);
  CopyOut(verifier, kHashAt, &info.encryptedVerifierHash);
  return info;
}

}  // namespace

EncryptionInfo ReadEncryptionInfo(Bytes stream, const DecryptionLimits& limits) {
  if (stream.size() < kHeaderSizeAt) return {};
  const uint64_t major = LoadLE<2>(stream, 0);
  const uint64_t minor = LoadLE<2>(stream, 2);
  if (minor == kStandardMinor && major >= 2 && major <= 4) return ReadStandard(stream);
  if (minor != kAgileMinor || major != kAgileMajor) return {};
  AgileInfo info;
  if (!ReadAgileDescriptor(stream.subspan(kHeaderSizeAt), limits, &info)) return {};
  return info;
}

}  // namespace fi::crypto
