// QuickTime movies without a file type (QuickTime File Format): atoms of a size and a type, of
// which one holds the movie. Media data may stand before it.
#ifndef FI_PROBES_MEDIA_QUICKTIME_H_
#define FI_PROBES_MEDIA_QUICKTIME_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatQuickTimeMovie or kNoMatch.
FormatId QuickTimeProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_MEDIA_QUICKTIME_H_
