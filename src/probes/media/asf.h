// Advanced Systems Format (Windows Media): a header object with a size and a number of objects
// inside.
#ifndef FI_PROBES_MEDIA_ASF_H_
#define FI_PROBES_MEDIA_ASF_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatAsf or kNoMatch. REQUIRES: the identifier of the header object has matched.
FormatId AsfProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_MEDIA_ASF_H_
