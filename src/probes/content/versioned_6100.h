// Forensic disk images in segments: AccessData custom content images and EnCase evidence files,
// whose headers tell the first segment from later ones and, in the second EnCase version, a trailer
// that tells whether the contents are encrypted. Each probe runs behind the signature of its kind
// and answers kNoMatch when the header does not hold.
#ifndef FI_PROBES_CONTENT_VERSIONED_6100_H_
#define FI_PROBES_CONTENT_VERSIONED_6100_H_

#include "engine/id_stream.h"
#include "formatid/formatid.h"

namespace fi {

FormatId Ad1Probe(IdentificationStream* stream);           // 6100, 6101
FormatId Ad1EncryptedProbe(IdentificationStream* stream);  // 6102
FormatId EnCaseEx01Probe(IdentificationStream* stream);    // 6103, 6110, 6111, 6112
FormatId EnCaseL01Probe(IdentificationStream* stream);     // 6104, 6105
FormatId EnCaseLx01Probe(IdentificationStream* stream);    // 6106, 6107, 6113, 6114
FormatId EnCaseE01Probe(IdentificationStream* stream);     // 6108, 6109

}  // namespace fi

#endif  // FI_PROBES_CONTENT_VERSIONED_6100_H_
