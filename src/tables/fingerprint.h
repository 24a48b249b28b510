// A number that changes when the registry or a signature does, so that results of two releases can
// be told apart.
#ifndef FI_TABLES_FINGERPRINT_H_
#define FI_TABLES_FINGERPRINT_H_

#include <cstdint>

namespace fi {

// FNV-1a over the registry and the encoded tables of signatures.
uint64_t RegistryFingerprint();

}  // namespace fi

#endif  // FI_TABLES_FINGERPRINT_H_
