// The stream "EncryptedPackage": eight bytes with the size of the package, then the package in
// whole AES blocks.
#ifndef FI_TOOLKIT_CRYPTO_PACKAGE_STREAM_H_
#define FI_TOOLKIT_CRYPTO_PACKAGE_STREAM_H_

#include "formatid/io.h"
#include "toolkit/crypto/limits.h"
#include "toolkit/crypto/package_key.h"
#include "toolkit/crypto/plaintext.h"

namespace fi::crypto {

// Decrypts the stream from its start into `*plaintext`, which is empty. A stream shorter than the
// size at its start is decrypted to its end. False when the stream is damaged (an HMAC, if present,
// covers the whole stream) or exceeds the limits, and when memory runs out.
bool DecryptPackage(IOHandle* stream, const PackageKey& key, const DecryptionLimits& limits,
                    Plaintext* plaintext);

}  // namespace fi::crypto

#endif  // FI_TOOLKIT_CRYPTO_PACKAGE_STREAM_H_
