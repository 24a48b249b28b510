// Lotus Word Pro documents: "WordPro", two bytes of the release, and zeros.
#ifndef FI_PROBES_DOCUMENT_WORD_PRO_H_
#define FI_PROBES_DOCUMENT_WORD_PRO_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatWordPro or kNoMatch. REQUIRES: the signature has matched.
FormatId WordProProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_DOCUMENT_WORD_PRO_H_
