// MicroStation design files, to version 7: records of a type and a length, of which the first three
// are a digitizer set-up, a file header and a level symbology, in any order.
#ifndef FI_PROBES_DRAWING_MICROSTATION_H_
#define FI_PROBES_DRAWING_MICROSTATION_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatMicroStationDesign7 or kNoMatch.
FormatId MicroStationProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_DRAWING_MICROSTATION_H_
