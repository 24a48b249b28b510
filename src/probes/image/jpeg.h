// JPEG (ITU-T T.81) and JPEG-LS (ITU-T T.87) images: the start of an image, then segments of a
// marker and a length.
#ifndef FI_PROBES_IMAGE_JPEG_H_
#define FI_PROBES_IMAGE_JPEG_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatJpeg, kFormatJpegLs where the first segment is the frame header of that, or kNoMatch.
// REQUIRES: the signature has matched.
FormatId JpegProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_IMAGE_JPEG_H_
