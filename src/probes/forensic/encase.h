// EnCase evidence files, in segments: headers tell the first segment from later ones and, in the
// second EnCase version, a trailer tells whether the contents are encrypted. Each probe runs behind
// the signature of its kind and answers kNoMatch when the header does not hold.
#ifndef FI_PROBES_FORENSIC_ENCASE_H_
#define FI_PROBES_FORENSIC_ENCASE_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

FormatId EnCaseEx01Probe(IdentificationStream* stream);  // 6103, 6110, 6111, 6112
FormatId EnCaseL01Probe(IdentificationStream* stream);   // 6104, 6105
FormatId EnCaseLx01Probe(IdentificationStream* stream);  // 6106, 6107, 6113, 6114
FormatId EnCaseE01Probe(IdentificationStream* stream);   // 6108, 6109

}  // namespace fi

#endif  // FI_PROBES_FORENSIC_ENCASE_H_
