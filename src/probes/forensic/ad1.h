// AccessData custom content images (AD1), in segments: a margin of 512 bytes tells the first
// segment from later ones. An encrypted image has a header of its own. Each probe runs behind the
// signature of its kind and answers kNoMatch when the header does not hold.
#ifndef FI_PROBES_FORENSIC_AD1_H_
#define FI_PROBES_FORENSIC_AD1_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

FormatId Ad1Probe(IdentificationStream* stream);           // 6100, 6101
FormatId Ad1EncryptedProbe(IdentificationStream* stream);  // 6102

}  // namespace fi

#endif  // FI_PROBES_FORENSIC_AD1_H_
