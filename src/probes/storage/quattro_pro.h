// Quattro Pro notebooks, whose storage class spans versions and products.
#ifndef FI_PROBES_STORAGE_QUATTRO_PRO_H_
#define FI_PROBES_STORAGE_QUATTRO_PRO_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// Quattro Pro 7 by the first eight bytes of "PerfectOffice_MAIN", else the version that the
// storage's class stands for, `classFormat`. kNoMatch when the handle is no storage.
FormatId ProbePerfectOfficeMain(IdentificationStream* stream, FormatId classFormat);

// Quattro Pro 9 by the first eight bytes of "NativeContent_MAIN", else kNoMatch.
FormatId ProbeNativeContentMain(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_STORAGE_QUATTRO_PRO_H_
