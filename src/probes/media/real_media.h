// RealMedia: a file header chunk of a type, a size, a version and a number of headers.
#ifndef FI_PROBES_MEDIA_REAL_MEDIA_H_
#define FI_PROBES_MEDIA_REAL_MEDIA_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatRealMedia or kNoMatch. REQUIRES: the type of the chunk has matched.
FormatId RealMediaProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_MEDIA_REAL_MEDIA_H_
