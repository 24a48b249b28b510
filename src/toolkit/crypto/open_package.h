// O12InitDecryption with its limits open.
#ifndef FI_TOOLKIT_CRYPTO_OPEN_PACKAGE_H_
#define FI_TOOLKIT_CRYPTO_OPEN_PACKAGE_H_

#include <cstdint>

#include "platform/decryption.h"
#include "toolkit/crypto/limits.h"

namespace fi::crypto {

// The status of O12InitDecryption; with 0 the view is in `*package`, which else stays as it is.
uint32_t OpenPackage(IOHandle* document, const O12PasswordSource& source,
                     const DecryptionLimits& limits, IOHandle** package);

}  // namespace fi::crypto

#endif  // FI_TOOLKIT_CRYPTO_OPEN_PACKAGE_H_
