// Keys, certificates and messages in printable form: a line "-----BEGIN LABEL-----", perhaps header
// fields, and base64. RFC 7468 describes those of public-key cryptography, RFC 9580 those of
// OpenPGP.
#ifndef FI_PROBES_KEYS_ARMOUR_H_
#define FI_PROBES_KEYS_ARMOUR_H_

#include <string_view>

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatPgpArmoured where the first line opens such a message, kFormatPem for any other within the
// first kilobyte, or kNoMatch.
FormatId ArmourProbe(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_KEYS_ARMOUR_H_
