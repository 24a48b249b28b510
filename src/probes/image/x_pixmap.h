// X pixmaps (XPM Manual, versions 2 and 3): colour images as text. Version 3 is C source behind a
// comment that holds the word XPM, version 2 the bare strings behind "! XPM2".
#ifndef FI_PROBES_IMAGE_X_PIXMAP_H_
#define FI_PROBES_IMAGE_X_PIXMAP_H_

#include <string_view>

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatXpm or kNoMatch. Looks at the first 512 bytes of the file.
FormatId XPixmapProbe(IdentificationStream* stream);

// Whether `text` is the head of a pixmap.
bool IsXPixmap(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_IMAGE_X_PIXMAP_H_
