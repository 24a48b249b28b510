// Binary formats whose mark stands behind the start of the file: boot sectors and volumes, music
// modules, cartridges, databases. One reading of the head serves them all.
#ifndef FI_PROBES_SYSTEM_MARKS_ELSEWHERE_H_
#define FI_PROBES_SYSTEM_MARKS_ELSEWHERE_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// The identifier of the format, or kNoMatch. Looks at the first 2 KB.
FormatId MarkElsewhereProbe(IdentificationStream* stream);

// The same for volumes and partition tables, which the images of other formats may hold.
FormatId VolumeProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_SYSTEM_MARKS_ELSEWHERE_H_
