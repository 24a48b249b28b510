// Encrypted packages: their scheme, and a look inside with the host's password.
#ifndef FI_PROBES_PROTECTION_ENCRYPTION_H_
#define FI_PROBES_PROTECTION_ENCRYPTION_H_

#include <cstdint>

#include "formatid/formatid.h"
#include "platform/decryption.h"
#include "stream/id_stream.h"

namespace fi {

// Schemes of ECMA-376 encryption, by the minor version of the stream "EncryptionInfo".
inline constexpr int32_t kStandardEncryption = 2;
inline constexpr int32_t kAgileEncryption = 4;

// The scheme, or -1 when the document in `stream` has no such stream, it is shorter than its
// 8-byte header, or names another scheme.
int32_t ReadEncryptionInfoVersion(IdentificationStream* stream);

using O12InitFunction = decltype(&O12InitDecryption);

// Opens a decrypted view of the compound file behind `document`, identifies it, and stores in
// `*outId` the identifier of an encrypted document of that kind. The stream's job asks for the
// password. The result is the status of `decrypt`, widened with its sign; with any but 0 nothing is
// stored. `decrypt` is a parameter so that tests may put their own in its place.
uint32_t DecryptAndReidentify(const IdentificationStream* document, FormatId* outId,
                              O12InitFunction decrypt = O12InitDecryption);

// The identifier of an encrypted document whose content is `id`; kFormatEncryptedOfficeXml for
// content of any other kind.
FormatId MapDecryptedId(FormatId id);

}  // namespace fi

#endif  // FI_PROBES_PROTECTION_ENCRYPTION_H_
