// MicroStation design files, to version 7: records of a type and a length, of which the first three
// are a digitizer set-up, a file header and a level symbology, in any order.
#ifndef FI_PROBES_CONTENT_RECORD_TRIPLET_H_
#define FI_PROBES_CONTENT_RECORD_TRIPLET_H_

#include "engine/id_stream.h"
#include "formatid/formatid.h"

namespace fi {

// kFormatMicroStationDesign7 or kNoMatch.
FormatId RecordTripletProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_CONTENT_RECORD_TRIPLET_H_
