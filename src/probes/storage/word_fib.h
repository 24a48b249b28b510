// Word documents since Word 97: which version wrote the document, by the application's name in the
// summary information, else by the file-information block of "WordDocument".
#ifndef FI_PROBES_STORAGE_WORD_FIB_H_
#define FI_PROBES_STORAGE_WORD_FIB_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// The version that wrote the document; kFormatWord2000 where nothing tells it. A package that lies
// encrypted in the document is named as such. Never kNoMatch.
FormatId ProbeWordFib(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_STORAGE_WORD_FIB_H_
