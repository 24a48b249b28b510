// Documents of two kinds that are not publicly known, whose text begins with fields marked by a
// vertical bar and a letter.
#ifndef FI_PROBES_UNIDENTIFIED_MARKER_SEQUENCE_H_
#define FI_PROBES_UNIDENTIFIED_MARKER_SEQUENCE_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// Whether the marks |N @ |O stand in this order within the 100 bytes from `offset`.
bool MarkerSequenceProbe(IdentificationStream* stream, uint32_t offset);

}  // namespace fi

#endif  // FI_PROBES_UNIDENTIFIED_MARKER_SEQUENCE_H_
