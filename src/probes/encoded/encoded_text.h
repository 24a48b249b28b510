// Text that carries a binary file in printable characters: uuencode, xxencode, yEnc and BinHex 4.0,
// each known by its header line, and all but yEnc also by a run of well-formed data lines.
#ifndef FI_PROBES_ENCODED_ENCODED_TEXT_H_
#define FI_PROBES_ENCODED_ENCODED_TEXT_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// Which encoding the file is in, or kNoMatch. Reads from its start: a dozen lines of prose, at most
// a hundred of anything, and all of the blanks before and between lines. Leaves the stream
// anywhere.
FormatId EncodedTextProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_ENCODED_ENCODED_TEXT_H_
