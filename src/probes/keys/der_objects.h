// Keys, certificates and messages in the encoding of X.690 (DER, and BER for messages of unknown
// length): X.509 certificates, CMS (RFC 5652) and PKCS #12 (RFC 7292).
#ifndef FI_PROBES_KEYS_DER_OBJECTS_H_
#define FI_PROBES_KEYS_DER_OBJECTS_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatCmsDer, kFormatCertificateDer, kFormatPkcs12 or kNoMatch. A length that is given must be
// that of the file, but for a line end behind it.
FormatId DerObjectProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_KEYS_DER_OBJECTS_H_
