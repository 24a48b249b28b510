// Encrypted Ami Pro documents: a tag and a line in 7-bit text, then data in which high bytes
// abound.
#ifndef FI_PROBES_CONTENT_HIGH_BYTE_DENSITY_H_
#define FI_PROBES_CONTENT_HIGH_BYTE_DENSITY_H_

#include "engine/id_stream.h"
#include "formatid/formatid.h"

namespace fi {

// kFormatAmiPro when one line ended by CR LF and dense 8-bit data follow, else kNoMatch.
// REQUIRES: the stream stands behind the line of the tag.
FormatId HighByteDensityProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_CONTENT_HIGH_BYTE_DENSITY_H_
