// Word-processing documents of a kind that is not publicly known, whose header carries a check
// value over a range of its words.
#ifndef FI_PROBES_UNIDENTIFIED_HEADER_CHECKSUM_H_
#define FI_PROBES_UNIDENTIFIED_HEADER_CHECKSUM_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// 1010 when the check value holds, else kNoMatch.
FormatId HeaderChecksumProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_UNIDENTIFIED_HEADER_CHECKSUM_H_
