// EnCase evidence files, in segments: headers tell the first segment from later ones and, in the
// second EnCase version, a trailer tells whether the contents are encrypted. Each probe runs behind
// the signature of its kind and answers kNoMatch when the header does not hold.
#ifndef FI_PROBES_FORENSIC_ENCASE_H_
#define FI_PROBES_FORENSIC_ENCASE_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kNoMatch, or the first or a later segment: kFormatEnCaseEx01First, kFormatEnCaseEx01Later, and
// both encrypted, kFormatEnCaseEx01FirstEncrypted and kFormatEnCaseEx01LaterEncrypted.
FormatId EnCaseEx01Probe(IdentificationStream* stream);

// kFormatEnCaseL01First, kFormatEnCaseL01Later or kNoMatch.
FormatId EnCaseL01Probe(IdentificationStream* stream);

// As EnCaseEx01Probe, with the formats of the name kFormatEnCaseLx01.
FormatId EnCaseLx01Probe(IdentificationStream* stream);

// kFormatEnCaseE01First, kFormatEnCaseE01Later or kNoMatch.
FormatId EnCaseE01Probe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_FORENSIC_ENCASE_H_
