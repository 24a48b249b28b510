// Windows icons and cursors: a number of images and a directory entry of 16 bytes for each, with
// the place and the size of its data. What tells them apart is a word at 2.
#ifndef FI_PROBES_IMAGE_ICON_H_
#define FI_PROBES_IMAGE_ICON_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatWindowsIcon or kNoMatch.
FormatId IconProbe(IdentificationStream* stream);

// kFormatWindowsCursor or kNoMatch.
FormatId CursorProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_IMAGE_ICON_H_
