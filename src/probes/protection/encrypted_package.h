// Documents of the Office Open XML family inside an encrypting or rights-managing compound file
// (stream "EncryptedPackage").
#ifndef FI_PROBES_PROTECTION_ENCRYPTED_PACKAGE_H_
#define FI_PROBES_PROTECTION_ENCRYPTED_PACKAGE_H_

#include <cstdint>

#include "formatid/formatid.h"
#include "probes/protection/encryption.h"
#include "stream/id_stream.h"

namespace fi {

// Stores in `*outId` which application's package it is, by the file name's extension (upper-cased,
// NUL-terminated) as far as that tells, else by a look inside with the host's password. The result
// is the status of that decryption, 0 when none was tried. `decrypt` as in DecryptAndReidentify.
uint32_t ClassifyEncryptedPackage(IdentificationStream* stream, const char* extension,
                                  FormatId* outId, O12InitFunction decrypt = O12InitDecryption);

}  // namespace fi

#endif  // FI_PROBES_PROTECTION_ENCRYPTED_PACKAGE_H_
