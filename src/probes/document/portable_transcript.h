// Portable transcripts: text with a block of "key=value" lines between begin=Head and end=Head, one
// of which says type=ptf.
#ifndef FI_PROBES_DOCUMENT_PORTABLE_TRANSCRIPT_H_
#define FI_PROBES_DOCUMENT_PORTABLE_TRANSCRIPT_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatPortableTranscript when that block stands within the first lines, else kNoMatch.
FormatId PortableTranscriptProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_DOCUMENT_PORTABLE_TRANSCRIPT_H_
