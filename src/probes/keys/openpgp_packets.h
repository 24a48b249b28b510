// OpenPGP in binary form (RFC 9580): a sequence of packets. The first must be a key, a signature or
// an encrypted session key with fields in range, and end where the file or a next packet does.
#ifndef FI_PROBES_KEYS_OPENPGP_PACKETS_H_
#define FI_PROBES_KEYS_OPENPGP_PACKETS_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatOpenPgpBinary or kNoMatch.
FormatId OpenPgpProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_KEYS_OPENPGP_PACKETS_H_
