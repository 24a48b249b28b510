// Files that begin with 00 00 02 00: worksheets of the Lotus family, whose first record (opcode 0,
// two bytes) holds their version; Windows cursors, where a number of images stands in its place;
// and Truevision TGA images of true colour without a colour map.
#ifndef FI_PROBES_CONTENT_WORKSHEET_VERSION_H_
#define FI_PROBES_CONTENT_WORKSHEET_VERSION_H_

#include "engine/id_stream.h"
#include "formatid/formatid.h"

namespace fi {

// kFormatLotusWorksheetOther, kFormatWindowsCursor, kFormatTga or kNoMatch. REQUIRES: the signature
// has matched.
FormatId WorksheetVersionProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_CONTENT_WORKSHEET_VERSION_H_
