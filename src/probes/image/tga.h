// Truevision TGA images (Truevision TGA File Format 2.0). The header of 18 bytes has
// no mark, so that the size of the picture must fit into the file.
#ifndef FI_PROBES_IMAGE_TGA_H_
#define FI_PROBES_IMAGE_TGA_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatTga for an uncompressed true-colour image without a colour map, or kNoMatch.
FormatId TgaProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_IMAGE_TGA_H_
