// Encrypted Ami Pro documents: a tag and a line in 7-bit text, then data in which high bytes
// abound.
#ifndef FI_PROBES_DOCUMENT_AMI_PRO_H_
#define FI_PROBES_DOCUMENT_AMI_PRO_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatAmiPro when one line ended by CR LF and dense 8-bit data follow, else kNoMatch.
// REQUIRES: the stream stands behind the line of the tag.
FormatId AmiProProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_DOCUMENT_AMI_PRO_H_
