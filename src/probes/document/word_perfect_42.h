// WordPerfect documents up to version 4.2 ("WordPerfect File Information", version 4.2): text
// without a header, between functions. A byte from 80 to BF is a function of its own; a byte from
// C0 on begins a longer function, which ends with the same byte.
#ifndef FI_PROBES_DOCUMENT_WORD_PERFECT_42_H_
#define FI_PROBES_DOCUMENT_WORD_PERFECT_42_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatWordPerfect42 or kNoMatch. Looks at the first 16 KB of the file, at no more than 512 bytes
// where these are ASCII, and stops at the first byte that such a document cannot hold there.
FormatId WordPerfect42Probe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_DOCUMENT_WORD_PERFECT_42_H_
