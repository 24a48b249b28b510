// Portable transcripts: text with a block of "key=value" lines between begin=Head and end=Head, one
// of which says type=ptf.
#ifndef FI_PROBES_CONTENT_PTF_HEADER_H_
#define FI_PROBES_CONTENT_PTF_HEADER_H_

#include "engine/id_stream.h"
#include "formatid/formatid.h"

namespace fi {

// kFormatPortableTranscript when that block stands within the first lines, else kNoMatch.
FormatId PtfHeaderProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_CONTENT_PTF_HEADER_H_
