// RC4, which is no part of OpenSSL's default provider.
#ifndef FI_TOOLKIT_CRYPTO_RC4_H_
#define FI_TOOLKIT_CRYPTO_RC4_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "toolkit/openssl/secret_bytes.h"

namespace fi::crypto {

// A stream of key bytes: what is encrypted piece by piece under one key is decrypted so.
class Rc4 {
 public:
  // REQUIRES: `key` is not empty.
  explicit Rc4(Bytes key) {
    for (size_t i = 0; i < state_.size(); ++i) state_[i] = static_cast<uint8_t>(i);
    uint8_t j = 0;
    for (size_t i = 0; i < state_.size(); ++i) {
      j = static_cast<uint8_t>(j + state_[i] + key[i % key.size()]);
      std::swap(state_[i], state_[j]);
    }
  }

  void Apply(uint8_t* data, size_t size) {
    for (size_t at = 0; at < size; ++at) {
      i_ = static_cast<uint8_t>(i_ + 1);
      j_ = static_cast<uint8_t>(j_ + state_[i_]);
      std::swap(state_[i_], state_[j_]);
      data[at] ^= state_[static_cast<uint8_t>(state_[i_] + state_[j_])];
    }
  }

 private:
  std::array<uint8_t, 256> state_;
  uint8_t i_ = 0;
  uint8_t j_ = 0;
};

}  // namespace fi::crypto

#endif  // FI_TOOLKIT_CRYPTO_RC4_H_
