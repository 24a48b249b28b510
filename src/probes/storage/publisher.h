// Microsoft Publisher documents: the stream "Contents" begins with E8 AC, a byte that rises with
// the version, and a zero byte.
#ifndef FI_PROBES_STORAGE_PUBLISHER_H_
#define FI_PROBES_STORAGE_PUBLISHER_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// Publisher up to 2000 or since 2002, else kNoMatch.
FormatId ProbeContentsStream(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_STORAGE_PUBLISHER_H_
