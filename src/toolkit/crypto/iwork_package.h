// IworksInitDecryption with its limits open.
#ifndef FI_TOOLKIT_CRYPTO_IWORK_PACKAGE_H_
#define FI_TOOLKIT_CRYPTO_IWORK_PACKAGE_H_

#include <cstdint>

#include "platform/iwork.h"
#include "toolkit/crypto/limits.h"

namespace fi::crypto {

// The status of IworksInitDecryption; with 0 the context is in the request, which else stays as it
// is.
uint32_t PrepareIwork(IworksRequest* request, const DecryptionLimits& limits);

}  // namespace fi::crypto

#endif  // FI_TOOLKIT_CRYPTO_IWORK_PACKAGE_H_
