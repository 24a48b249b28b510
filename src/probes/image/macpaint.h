// MacPaint images without a MacBinary header: 512 bytes for a version and patterns, then 720 lines
// of 72 bytes, each packed by itself (PackBits, Apple Technical Note TN1023).
#ifndef FI_PROBES_IMAGE_MACPAINT_H_
#define FI_PROBES_IMAGE_MACPAINT_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatMacPaint or kNoMatch.
FormatId MacPaintProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_IMAGE_MACPAINT_H_
