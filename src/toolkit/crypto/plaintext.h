// Where a decrypted package is kept: in memory, or in a temporary file that has no name. Both are
// overwritten when they go.
#ifndef FI_TOOLKIT_CRYPTO_PLAINTEXT_H_
#define FI_TOOLKIT_CRYPTO_PLAINTEXT_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "toolkit/crypto/limits.h"
#include "toolkit/openssl/secret_bytes.h"

namespace fi::crypto {

class Plaintext {
 public:
  Plaintext() = default;
  ~Plaintext();
  Plaintext(const Plaintext&) = delete;
  Plaintext& operator=(const Plaintext&) = delete;

  // Chooses the place for up to `size` bytes; memory is taken as they come. False when there is no
  // temporary file to be had. Called once, first.
  bool Reserve(uint64_t size, const DecryptionLimits& limits);

  // False when memory or the disk is full, or when that is more than what was reserved.
  bool Append(Bytes bytes);

  uint64_t size() const { return size_; }
  bool InMemory() const { return descriptor_ < 0; }

  // Copies up to `size` bytes from `offset`. False when the temporary file cannot be read.
  bool ReadAt(uint64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) const;

 private:
  static constexpr size_t kBlockSize = size_t{256} * 1024;
  static constexpr size_t kMaxBlocks = kMaxPlaintextMemory / kBlockSize;

  bool AppendToMemory(Bytes bytes);
  bool AppendToFile(Bytes bytes);

  uint64_t reserved_ = 0;
  uint64_t size_ = 0;
  int descriptor_ = -1;
  std::array<std::unique_ptr<uint8_t[]>, kMaxBlocks> blocks_;
};

}  // namespace fi::crypto

#endif  // FI_TOOLKIT_CRYPTO_PLAINTEXT_H_
