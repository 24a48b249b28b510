// Tables of dBASE, FoxPro and their kin: a header of 32 bytes with the date of the last change and
// the sizes of header and record, then a description of 32 bytes for each field.
#ifndef FI_PROBES_DATABASE_DBASE_H_
#define FI_PROBES_DATABASE_DBASE_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatDbase or kNoMatch.
FormatId DbaseProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_DATABASE_DBASE_H_
