// Files of the ISO base media family (MP4, QuickTime, HEIF): boxes of a size and a type, of which
// the first lists the brands that the file conforms to.
#ifndef FI_PROBES_MEDIA_ISO_MEDIA_H_
#define FI_PROBES_MEDIA_ISO_MEDIA_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// The identifier for the first brand with one of its own, kFormatIsoMedia for other brands, or
// kNoMatch when the file does not begin with a file-type box.
FormatId IsoMediaProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_MEDIA_ISO_MEDIA_H_
