// Hashes, AES and HMAC over libcrypto. Every call answers false when libcrypto is missing, when
// memory ran out or when an algorithm is not to be had.
#ifndef FI_TOOLKIT_OPENSSL_EVP_H_
#define FI_TOOLKIT_OPENSSL_EVP_H_

#include <openssl/core_dispatch.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string_view>

#include "toolkit/openssl/libcrypto.h"
#include "toolkit/openssl/secret_bytes.h"

namespace fi::crypto {

constexpr size_t kAesBlock = 16;
constexpr size_t kMaxKey = 32;
constexpr size_t kMaxHash = 64;

using HashValue = SecretBytes<kMaxHash>;

// MD5 is for schemes that ask for it.
enum class HashAlgorithm { kMd5, kSha1, kSha256, kSha384, kSha512 };

// Bytes of a hash value.
size_t HashSize(HashAlgorithm algorithm);

// Takes back, at the end of a scope, what failed calls in it left in the thread's queue of errors:
// a host that shares libcrypto would take them for those of its own calls.
class ErrorMark {
 public:
  ErrorMark();
  ~ErrorMark();
  ErrorMark(const ErrorMark&) = delete;
  ErrorMark& operator=(const ErrorMark&) = delete;

 private:
  const LibCrypto* const lib_;
};

// The functions of a hash algorithm and one state of it.
class Hasher {
 public:
  explicit Hasher(HashAlgorithm algorithm);
  ~Hasher();
  Hasher(const Hasher&) = delete;
  Hasher& operator=(const Hasher&) = delete;

  // Hash of the parts, one behind the other. `value` may hold one of the parts.
  bool Hash(std::initializer_list<Bytes> parts, HashValue* value);

  // The same step by step.
  bool Begin();
  bool Add(Bytes bytes);
  bool End(HashValue* value);

 private:
  OSSL_FUNC_digest_freectx_fn* free_ = nullptr;
  OSSL_FUNC_digest_init_fn* init_ = nullptr;
  OSSL_FUNC_digest_update_fn* update_ = nullptr;
  OSSL_FUNC_digest_final_fn* final_ = nullptr;
  void* state_ = nullptr;
};

enum class AesMode { kEcb, kCbc };

class AesDecryptor {
 public:
  // `key` holds 16, 24 or 32 bytes; of any other size, nothing is decrypted.
  AesDecryptor(AesMode mode, Bytes key);
  ~AesDecryptor();
  AesDecryptor(const AesDecryptor&) = delete;
  AesDecryptor& operator=(const AesDecryptor&) = delete;

  // Decrypts whole blocks without padding to `out`, which has room for as many bytes. `iv` holds
  // kAesBlock bytes in CBC mode and is ignored in ECB mode. False when `in` is no whole number of
  // blocks.
  bool Decrypt(Bytes iv, Bytes in, uint8_t* out);

 private:
  const AesMode mode_;
  OSSL_FUNC_cipher_freectx_fn* free_ = nullptr;
  OSSL_FUNC_cipher_decrypt_init_fn* init_ = nullptr;
  OSSL_FUNC_cipher_cipher_fn* cipher_ = nullptr;
  void* state_ = nullptr;
  bool ready_ = false;
};

// Encrypts whole blocks with AES-128 in CBC mode, without padding; `out` may be `in`. False when a
// length does not fit.
bool EncryptAes128Cbc(Bytes key, Bytes iv, Bytes in, uint8_t* out);

// RFC 2104.
class Hmac {
 public:
  Hmac(HashAlgorithm algorithm, Bytes key);
  Hmac(const Hmac&) = delete;
  Hmac& operator=(const Hmac&) = delete;

  bool Update(Bytes bytes);

  // The code of what was added since the last call.
  bool Finish(HashValue* value);

 private:
  static constexpr size_t kMaxBlock = 128;

  bool Begin();

  Hasher hasher_;
  SecretBytes<kMaxBlock> inner_;
  SecretBytes<kMaxBlock> outer_;
  bool ready_ = false;
};

// The PBKDF2 key (RFC 8018) of `size` bytes over HMAC-SHA1. `rounds` is not 0.
bool DeriveKey(Bytes password, Bytes salt, uint32_t rounds, uint8_t* key, size_t size);

// Whether both hold the same bytes, in a time that depends on their sizes only.
bool EqualSecrets(Bytes left, Bytes right);

// Decodes base64 of up to `capacity` bytes, padded to a multiple of four and without line ends.
// False, and nothing counts as stored, for anything else.
bool DecodeBase64(std::string_view text, uint8_t* out, size_t capacity, size_t* size);

}  // namespace fi::crypto

#endif  // FI_TOOLKIT_OPENSSL_EVP_H_
