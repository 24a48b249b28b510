// Portable anymaps (PBM, PGM, PPM and PAM of Netpbm): "P" and a digit, then the size of the picture
// as decimal numbers between white space and comments, then the samples.
#ifndef FI_PROBES_IMAGE_ANYMAP_H_
#define FI_PROBES_IMAGE_ANYMAP_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatPortableAnymap or kNoMatch.
FormatId AnymapProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_IMAGE_ANYMAP_H_
