// MicroStation design files, to version 7: records of a type and a length, of which the first three
// are a file header, a symbology record and a colour table.
#ifndef FI_PROBES_CONTENT_RECORD_TRIPLET_H_
#define FI_PROBES_CONTENT_RECORD_TRIPLET_H_

#include "engine/id_stream.h"
#include "formatid/formatid.h"

namespace fi {

// kFormatMicroStationDesign7 or kNoMatch.
FormatId RecordTripletProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_CONTENT_RECORD_TRIPLET_H_
