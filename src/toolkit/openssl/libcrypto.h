// The functions of OpenSSL's libcrypto that the decryption calls. The library is loaded when the
// first encrypted package is met, and not with the program: loading it takes longer than
// identifying a file does, and most runs never need it.
#ifndef FI_TOOLKIT_OPENSSL_LIBCRYPTO_H_
#define FI_TOOLKIT_OPENSSL_LIBCRYPTO_H_

#include <openssl/core.h>
#include <openssl/crypto.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/provider.h>

#include <string_view>

#define FI_LIBCRYPTO_FUNCTIONS(FUNCTION)    \
  FUNCTION(CRYPTO_memcmp)                   \
  FUNCTION(ERR_pop_to_mark)                 \
  FUNCTION(ERR_set_mark)                    \
  FUNCTION(EVP_DecodeBlock)                 \
  FUNCTION(OSSL_LIB_CTX_free)               \
  FUNCTION(OSSL_LIB_CTX_new)                \
  FUNCTION(OSSL_PROVIDER_get0_provider_ctx) \
  FUNCTION(OSSL_PROVIDER_load)              \
  FUNCTION(OSSL_PROVIDER_query_operation)

namespace fi::crypto {

struct LibCrypto {
#define FI_DECLARE(name) decltype(&::name) name;
  FI_LIBCRYPTO_FUNCTIONS(FI_DECLARE)
#undef FI_DECLARE

  // The built-in provider of algorithms, in a context of the library's own. Its functions are
  // called directly: the EVP layer above them reads OpenSSL's configuration file (OPENSSL_CONF),
  // which may name code of others, whatever the context. libcrypto's settings for the host stay
  // untouched.
  OSSL_PROVIDER* provider;

  // The functions of an algorithm of the provider; null when it has none of that name.
  const OSSL_DISPATCH* FindAlgorithm(int operation, std::string_view name) const;
};

// The functions, all of them present; null when the system has no libcrypto of the version that
// this was built for. It stays loaded until the process ends, and so does
// the provider. Thread-safe.
const LibCrypto* LoadLibCrypto();

}  // namespace fi::crypto

#endif  // FI_TOOLKIT_OPENSSL_LIBCRYPTO_H_
