// Windows cabinets ([MS-CAB]): a header of 36 bytes, then entries of folders and of files, whose
// names are not compressed. Form templates of InfoPath are cabinets with a manifest.
#ifndef FI_PROBES_ARCHIVE_CABINET_H_
#define FI_PROBES_ARCHIVE_CABINET_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatCabinet, kFormatInfoPathFormTemplate or kNoMatch. REQUIRES: the signature has matched.
FormatId CabinetProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_ARCHIVE_CABINET_H_
