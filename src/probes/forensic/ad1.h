// AccessData custom content images (AD1), in segments: a margin of 512 bytes tells the first
// segment from later ones. An encrypted image has a header of its own. Each probe runs behind the
// signature of its kind and answers kNoMatch when the header does not hold.
#ifndef FI_PROBES_FORENSIC_AD1_H_
#define FI_PROBES_FORENSIC_AD1_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatAd1First, kFormatAd1Later or kNoMatch.
FormatId Ad1Probe(IdentificationStream* stream);

// kFormatAd1Encrypted or kNoMatch.
FormatId Ad1EncryptedProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_FORENSIC_AD1_H_
