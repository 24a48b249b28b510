#include "toolkit/crypto/package_stream.h"

#include <algorithm>
#include <memory>
#include <new>
#include <optional>

#include "platform/io.h"
#include "platform/work.h"
#include "toolkit/crypto/little_endian.h"
#include "toolkit/crypto/stream_bytes.h"

namespace fi::crypto {
namespace {

constexpr size_t kSizeField = 8;

// In CBC mode each segment is a chain of its own. In ECB mode the blocks know no segments, and it
// is only the unit of reading.
constexpr size_t kSegment = 4096;

class PackageReader {
 public:
  PackageReader(IOHandle* stream, const PackageKey& key, Plaintext* plaintext)
      : stream_(stream), key_(key), plaintext_(plaintext), aes_(key.mode, key.key.view()) {}

  bool Read(const DecryptionLimits& limits) {
    const std::optional<uint64_t> streamSize = StreamSize(stream_);
    if (!streamSize.has_value() || *streamSize < kSizeField) return false;
    std::array<uint8_t, kSizeField> field{};
    if (io::ReadFully(stream_, field.data(), field.size()) != field.size()) return false;
    size_ = std::min(LoadLE<kSizeField>(field, 0), *streamSize - kSizeField);
    if (size_ > limits.mostPlaintext) return false;
    if (!plaintext_->Reserve(size_, limits)) return NoMemory();
    if (!key_.hasIntegrity) return ReadSegments(nullptr);
    Hmac hmac(key_.hash, key_.hmacKey.view());
    HashValue value;
    if (!hmac.Update(field)) return NoMemory();
    if (!ReadSegments(&hmac)) return false;
    return hmac.Finish(&value) ? EqualSecrets(value.view(), key_.hmacValue.view()) : NoMemory();
  }

 private:
  bool NoMemory() const {
    NoteNoMemory(stream_);
    return false;
  }

  // Reads to the end of the package, or with `hmac` to the end of the stream. Ordinary streams have
  // little behind the package, so kMoreSegments bounds the rest.
  bool ReadSegments(Hmac* hmac) {
    const uint64_t segments = (size_ + kSegment - 1) / kSegment;
    const uint64_t most = segments + kMoreSegments;
    for (uint64_t index = 0; index < (hmac == nullptr ? segments : most); ++index) {
      const size_t count = io::ReadFully(stream_, encrypted_.data(), kSegment);
      const Bytes read = Bytes(encrypted_).first(count);
      if (hmac != nullptr && !hmac->Update(read)) return NoMemory();
      if (index < segments && !DecryptSegment(static_cast<uint32_t>(index), read)) return false;
      if (count < kSegment) return true;
    }
    return hmac == nullptr;
  }

  // What is no whole block at the end of the stream is left out.
  bool DecryptSegment(uint32_t index, Bytes encrypted) {
    encrypted = encrypted.first(encrypted.size() - encrypted.size() % kAesBlock);
    HashValue hash;
    Bytes iv;
    if (key_.mode == AesMode::kCbc) {
      if (!hasher_.Hash({key_.salt.view(), StoreLE32(index)}, &hash)) return NoMemory();
      iv = hash.view().first(kAesBlock);
    }
    if (!aes_.Decrypt(iv, encrypted, decrypted_.data())) return NoMemory();
    const uint64_t left = size_ - plaintext_->size();
    decrypted_.SetSize(static_cast<size_t>(std::min<uint64_t>(left, encrypted.size())));
    return plaintext_->Append(decrypted_.view()) || NoMemory();
  }

  // Bytes behind the package that are read for the HMAC at most: 1 MB.
  static constexpr uint64_t kMoreSegments = 256;

  IOHandle* const stream_;
  const PackageKey& key_;
  Plaintext* const plaintext_;
  AesDecryptor aes_;
  Hasher hasher_{key_.hash};
  uint64_t size_ = 0;  // of the package
  std::array<uint8_t, kSegment> encrypted_;
  SecretBytes<kSegment> decrypted_;
};

}  // namespace

bool DecryptPackage(IOHandle* stream, const PackageKey& key, const DecryptionLimits& limits,
                    Plaintext* plaintext) {
  PackageReader reader(stream, key, plaintext);
  return reader.Read(limits);
}

}  // namespace fi::crypto
