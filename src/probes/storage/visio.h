// Visio drawings in compound files: the stream "VisioDocument" holds the version of the format.
#ifndef FI_PROBES_STORAGE_VISIO_H_
#define FI_PROBES_STORAGE_VISIO_H_

#include "engine/id_stream.h"
#include "formatid/formatid.h"

namespace fi {

// The version of the drawing, else kNoMatch.
FormatId ProbeVisioDocument(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_STORAGE_VISIO_H_
