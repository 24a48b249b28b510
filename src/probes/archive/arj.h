// ARJ archives (ARJ TECHNOTE): a main header of a mark, its size and a fixed part, whose type of
// file says that it is one.
#ifndef FI_PROBES_ARCHIVE_ARJ_H_
#define FI_PROBES_ARCHIVE_ARJ_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatArj or kNoMatch.
FormatId ArjProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_ARCHIVE_ARJ_H_
