// Tables of Paradox: a header with the sizes of records, of itself and of the blocks that follow.
// There is no mark, so that all of them must agree with the size of the file.
#ifndef FI_PROBES_DATABASE_PARADOX_H_
#define FI_PROBES_DATABASE_PARADOX_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatParadoxTable or kNoMatch.
FormatId ParadoxProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_DATABASE_PARADOX_H_
