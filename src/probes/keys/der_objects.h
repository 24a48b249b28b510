// Keys, certificates and messages in the encoding of X.690 (DER, and BER for messages of unknown
// length): X.509 certificates, CMS (RFC 5652) and PKCS #12 (RFC 7292).
#ifndef FI_PROBES_KEYS_DER_OBJECTS_H_
#define FI_PROBES_KEYS_DER_OBJECTS_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatCmsDer, kFormatCertificateDer, kFormatPkcs12 or kNoMatch. A definite length must match the
// size of the file; only a line end may follow.
FormatId DerObjectProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_KEYS_DER_OBJECTS_H_
