// Encapsulated PostScript behind the binary header for DOS, which says where in the file the
// PostScript code, a metafile and a TIFF image to show in its stead are.
#ifndef FI_PROBES_PRINT_EPS_PREVIEW_H_
#define FI_PROBES_PRINT_EPS_PREVIEW_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatEpsWithTiffPreview when the header names a TIFF image, else kNoMatch.
FormatId EpsPreviewProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_PRINT_EPS_PREVIEW_H_
