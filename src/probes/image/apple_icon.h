// Apple icons: "icns" and the size of the file, then elements of a type and a size.
#ifndef FI_PROBES_IMAGE_APPLE_ICON_H_
#define FI_PROBES_IMAGE_APPLE_ICON_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatAppleIcon or kNoMatch.
FormatId AppleIconProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_IMAGE_APPLE_ICON_H_
