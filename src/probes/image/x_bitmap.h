// X bitmaps: C source text that defines a width, a height, perhaps the two co-ordinates of a hot
// spot, and then a static array.
#ifndef FI_PROBES_IMAGE_X_BITMAP_H_
#define FI_PROBES_IMAGE_X_BITMAP_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatXbm or kNoMatch. Looks at the first 4 KB of the file.
FormatId XBitmapProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_IMAGE_X_BITMAP_H_
