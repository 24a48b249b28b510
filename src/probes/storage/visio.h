// Visio drawings in compound files: the stream "VisioDocument" holds the version of the format.
#ifndef FI_PROBES_STORAGE_VISIO_H_
#define FI_PROBES_STORAGE_VISIO_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// The version of the drawing, else kNoMatch.
FormatId ProbeVisioDocument(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_STORAGE_VISIO_H_
