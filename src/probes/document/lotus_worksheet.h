// Files that begin with 00 00 02 00: worksheets of the Lotus family, whose first record (opcode 0,
// two bytes) holds their version; Windows cursors, where a number of images stands in its place;
// and Truevision TGA images of true colour without a colour map.
#ifndef FI_PROBES_DOCUMENT_LOTUS_WORKSHEET_H_
#define FI_PROBES_DOCUMENT_LOTUS_WORKSHEET_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatLotusWorksheetOther, kFormatWindowsCursor, kFormatTga or kNoMatch. REQUIRES: the signature
// has matched.
FormatId LotusWorksheetProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_DOCUMENT_LOTUS_WORKSHEET_H_
