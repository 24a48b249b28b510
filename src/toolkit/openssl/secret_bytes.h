// Bytes that nobody may find in memory later: passwords, keys, and what leads to them.
#ifndef FI_TOOLKIT_OPENSSL_SECRET_BYTES_H_
#define FI_TOOLKIT_OPENSSL_SECRET_BYTES_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace fi::crypto {

using Bytes = std::span<const uint8_t>;

// Up to `kCapacity` bytes, wiped when the object goes. It cannot be copied, so that no copy is left
// behind.
template <size_t kCapacity>
class SecretBytes {
 public:
  SecretBytes() = default;
  ~SecretBytes() { explicit_bzero(bytes_.data(), kCapacity); }
  SecretBytes(const SecretBytes&) = delete;
  SecretBytes& operator=(const SecretBytes&) = delete;

  uint8_t* data() { return bytes_.data(); }
  size_t size() const { return size_; }

  // REQUIRES: size <= kCapacity. The bytes beyond the old size are what was stored there.
  void SetSize(size_t size) { size_ = size; }

  // False, and nothing is stored, when `bytes` has no room.
  bool Append(Bytes bytes) {
    if (bytes.size() > kCapacity - size_) return false;
    for (const uint8_t byte : bytes) bytes_[size_++] = byte;
    return true;
  }

  Bytes view() const { return Bytes(bytes_).first(size_); }

 private:
  std::array<uint8_t, kCapacity> bytes_{};
  size_t size_ = 0;
};

}  // namespace fi::crypto

#endif  // FI_TOOLKIT_OPENSSL_SECRET_BYTES_H_
