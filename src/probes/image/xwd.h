// Window dumps of the X Window System (X11/XWDFile.h): big-endian double words for the size of the
// header, the version and the form of the picture.
#ifndef FI_PROBES_IMAGE_XWD_H_
#define FI_PROBES_IMAGE_XWD_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatXwd or kNoMatch.
FormatId XwdProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_IMAGE_XWD_H_
