// The functions of OpenSSL's libcrypto that the decryption calls. The library is loaded when the
// first encrypted package is met, and not with the program: loading it takes longer than
// identifying a file does, and most runs never need it.
#ifndef FI_TOOLKIT_OPENSSL_LIBCRYPTO_H_
#define FI_TOOLKIT_OPENSSL_LIBCRYPTO_H_

#include <openssl/core_names.h>
#include <openssl/crypto.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/kdf.h>
#include <openssl/params.h>
#include <openssl/provider.h>

#define FI_LIBCRYPTO_FUNCTIONS(FUNCTION)      \
  FUNCTION(CRYPTO_memcmp)                     \
  FUNCTION(ERR_pop_to_mark)                   \
  FUNCTION(ERR_set_mark)                      \
  FUNCTION(EVP_CIPHER_CTX_free)               \
  FUNCTION(EVP_CIPHER_CTX_new)                \
  FUNCTION(EVP_CIPHER_CTX_set_padding)        \
  FUNCTION(EVP_CIPHER_fetch)                  \
  FUNCTION(EVP_CIPHER_free)                   \
  FUNCTION(EVP_DecodeBlock)                   \
  FUNCTION(EVP_DecryptInit_ex)                \
  FUNCTION(EVP_DecryptUpdate)                 \
  FUNCTION(EVP_DigestFinal_ex)                \
  FUNCTION(EVP_DigestInit_ex)                 \
  FUNCTION(EVP_DigestUpdate)                  \
  FUNCTION(EVP_KDF_CTX_free)                  \
  FUNCTION(EVP_KDF_CTX_new)                   \
  FUNCTION(EVP_KDF_derive)                    \
  FUNCTION(EVP_KDF_fetch)                     \
  FUNCTION(EVP_KDF_free)                      \
  FUNCTION(EVP_MAC_CTX_free)                  \
  FUNCTION(EVP_MAC_CTX_new)                   \
  FUNCTION(EVP_MAC_fetch)                     \
  FUNCTION(EVP_MAC_final)                     \
  FUNCTION(EVP_MAC_free)                      \
  FUNCTION(EVP_MAC_init)                      \
  FUNCTION(EVP_MAC_update)                    \
  FUNCTION(EVP_MD_CTX_free)                   \
  FUNCTION(EVP_MD_CTX_new)                    \
  FUNCTION(EVP_MD_fetch)                      \
  FUNCTION(EVP_MD_free)                       \
  FUNCTION(OSSL_LIB_CTX_free)                 \
  FUNCTION(OSSL_LIB_CTX_new)                  \
  FUNCTION(OSSL_PARAM_construct_end)          \
  FUNCTION(OSSL_PARAM_construct_int)          \
  FUNCTION(OSSL_PARAM_construct_octet_string) \
  FUNCTION(OSSL_PARAM_construct_uint)         \
  FUNCTION(OSSL_PARAM_construct_utf8_string)  \
  FUNCTION(OSSL_PROVIDER_load)

namespace fi::crypto {

struct LibCrypto {
#define FI_DECLARE(name) decltype(&::name) name;
  FI_LIBCRYPTO_FUNCTIONS(FI_DECLARE)
#undef FI_DECLARE

  // Where algorithms are fetched from: a context of the library's own with the built-in provider
  // and nothing else. No configuration file is read for it, so that neither the environment
  // (OPENSSL_CONF, OPENSSL_MODULES) nor a host's settings bring foreign code into a decryption.
  OSSL_LIB_CTX* context;
};

// The functions, all of them present; null when the system has no libcrypto of the version that
// this was built for. It stays loaded until the process ends, and so does the context. Thread-safe.
const LibCrypto* LoadLibCrypto();

}  // namespace fi::crypto

#endif  // FI_TOOLKIT_OPENSSL_LIBCRYPTO_H_
