// Images without a mark, which the catalogue takes by the file's name: whether their headers bear
// that out.
//
// TGA (Truevision, 1991): 18 bytes, of which kind, depth and colour map depend on each other; from
// version 2 on a mark ends the file. WBMP (WAP-237): two zeros, width and height of seven bits a
// byte, then one bit a pixel.
#ifndef FI_PROBES_IMAGE_BARE_IMAGES_H_
#define FI_PROBES_IMAGE_BARE_IMAGES_H_

#include "stream/id_stream.h"

namespace fi {

bool MayBeTarga(IdentificationStream* stream);
bool MayBeWirelessBitmap(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_IMAGE_BARE_IMAGES_H_
