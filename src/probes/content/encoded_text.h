// Text that carries a binary file: uuencode, xxencode, yEnc, BinHex.
#ifndef FI_PROBES_CONTENT_ENCODED_TEXT_H_
#define FI_PROBES_CONTENT_ENCODED_TEXT_H_

#include "engine/id_stream.h"
#include "formatid/formatid.h"

namespace fi {

// Which encoding the text at the stream's position is in, or kNoMatch. Knows none yet.
FormatId EncodedTextProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_CONTENT_ENCODED_TEXT_H_
