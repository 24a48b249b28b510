// Micrografx Designer drawings: the stream "DesignerDoc" holds the version of the format.
#ifndef FI_PROBES_STORAGE_DESIGNER_H_
#define FI_PROBES_STORAGE_DESIGNER_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// The version of the drawing, kFormatMicrografxDesigner6 where nothing tells it, also for a file
// that is no compound document. Never kNoMatch.
FormatId ProbeDesignerDoc(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_STORAGE_DESIGNER_H_
