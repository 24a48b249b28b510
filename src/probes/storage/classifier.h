// Names a compound document by the streams and storages that it holds, and where several formats
// share a name, by the first bytes of the stream.
#ifndef FI_PROBES_STORAGE_CLASSIFIER_H_
#define FI_PROBES_STORAGE_CLASSIFIER_H_

#include <cstdint>

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// Stores the format in `*outId`, kNoMatch when the handle is no storage or the document is not
// recognised. `extension` is upper-cased, of up to four characters and NUL-terminated. The result
// is the status of a decryption (see DecryptAndReidentify), 0 when none was tried.
uint32_t ClassifyCompoundDocument(IdentificationStream* stream, const char* extension,
                                  FormatId* outId);

}  // namespace fi

#endif  // FI_PROBES_STORAGE_CLASSIFIER_H_
