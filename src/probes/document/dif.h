// Spreadsheets in the Data Interchange Format: text whose header names TABLE, VECTORS, TUPLES and
// DATA on lines of their own, each with two lines of values behind it.
#ifndef FI_PROBES_DOCUMENT_DIF_H_
#define FI_PROBES_DOCUMENT_DIF_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatDif when the four names stand within the first lines of the file, else kNoMatch.
FormatId DifProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_DOCUMENT_DIF_H_
