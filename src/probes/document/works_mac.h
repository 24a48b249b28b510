// Spreadsheets of Microsoft Works for Macintosh, versions 1 and 2: a version, then a word for the
// kind of document in a header that is mostly zeros.
#ifndef FI_PROBES_DOCUMENT_WORKS_MAC_H_
#define FI_PROBES_DOCUMENT_WORKS_MAC_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatWorksSpreadsheetForMac or kNoMatch. REQUIRES: the signature has matched.
FormatId WorksMacProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_DOCUMENT_WORKS_MAC_H_
