// The functions of OpenSSL's libcrypto that the decryption calls. The library is loaded when the
// first encrypted package is met, and not with the program: loading it takes longer than
// identifying a file does, and most runs never need it.
#ifndef FI_TOOLKIT_OPENSSL_LIBCRYPTO_H_
#define FI_TOOLKIT_OPENSSL_LIBCRYPTO_H_

#include <openssl/core_names.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/params.h>

#define FI_LIBCRYPTO_FUNCTIONS(FUNCTION)     \
  FUNCTION(ERR_pop_to_mark)                  \
  FUNCTION(ERR_set_mark)                     \
  FUNCTION(EVP_CIPHER_CTX_free)              \
  FUNCTION(EVP_CIPHER_CTX_new)               \
  FUNCTION(EVP_CIPHER_CTX_set_padding)       \
  FUNCTION(EVP_CIPHER_fetch)                 \
  FUNCTION(EVP_CIPHER_free)                  \
  FUNCTION(EVP_DecodeBlock)                  \
  FUNCTION(EVP_DecryptInit_ex)               \
  FUNCTION(EVP_DecryptUpdate)                \
  FUNCTION(EVP_DigestFinal_ex)               \
  FUNCTION(EVP_DigestInit_ex)                \
  FUNCTION(EVP_DigestUpdate)                 \
  FUNCTION(EVP_EncryptInit_ex)               \
  FUNCTION(EVP_EncryptUpdate)                \
  FUNCTION(EVP_MAC_CTX_free)                 \
  FUNCTION(EVP_MAC_CTX_new)                  \
  FUNCTION(EVP_MAC_fetch)                    \
  FUNCTION(EVP_MAC_final)                    \
  FUNCTION(EVP_MAC_free)                     \
  FUNCTION(EVP_MAC_init)                     \
  FUNCTION(EVP_MAC_update)                   \
  FUNCTION(EVP_MD_CTX_free)                  \
  FUNCTION(EVP_MD_CTX_new)                   \
  FUNCTION(EVP_MD_fetch)                     \
  FUNCTION(EVP_MD_free)                      \
  FUNCTION(OSSL_PARAM_construct_end)         \
  FUNCTION(OSSL_PARAM_construct_utf8_string) \
  FUNCTION(PKCS5_PBKDF2_HMAC_SHA1)

namespace fi::crypto {

struct LibCrypto {
#define FI_DECLARE(name) decltype(&::name) name;
  FI_LIBCRYPTO_FUNCTIONS(FI_DECLARE)
#undef FI_DECLARE
};

// The functions, all of them present; null when the system has no libcrypto of the version that
// this was built for. It stays loaded until the process ends. Thread-safe.
const LibCrypto* LoadLibCrypto();

}  // namespace fi::crypto

#endif  // FI_TOOLKIT_OPENSSL_LIBCRYPTO_H_
