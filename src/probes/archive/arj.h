// ARJ archives (ARJ TECHNOTE): a main header of a mark, a size and a fixed part. The file type in
// the fixed part marks a main header.
#ifndef FI_PROBES_ARCHIVE_ARJ_H_
#define FI_PROBES_ARCHIVE_ARJ_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatArj or kNoMatch.
FormatId ArjProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_ARCHIVE_ARJ_H_
