// Documents of the Office Open XML family inside an encrypting or rights-managing compound file
// (stream "EncryptedPackage").
#ifndef FI_PROBES_PROTECTION_ENCRYPTED_PACKAGE_H_
#define FI_PROBES_PROTECTION_ENCRYPTED_PACKAGE_H_

#include <cstdint>

#include "formatid/formatid.h"
#include "probes/protection/encryption.h"
#include "stream/id_stream.h"

namespace fi {

// Stores the format of the encrypted package in `*outId`. The file name's extension (in upper case,
// terminated) decides if it names an application, else the content, decrypted with the host's
// password. Returns the status of the decryption, 0 without an attempt. `decrypt` as in
// DecryptAndReidentify.
uint32_t ClassifyEncryptedPackage(IdentificationStream* stream, const char* extension,
                                  FormatId* outId, O12InitFunction decrypt = O12InitDecryption);

}  // namespace fi

#endif  // FI_PROBES_PROTECTION_ENCRYPTED_PACKAGE_H_
