// Rights-managed compound documents.
#ifndef FI_PROBES_STORAGE_RIGHTS_MANAGEMENT_H_
#define FI_PROBES_STORAGE_RIGHTS_MANAGEMENT_H_

#include "engine/id_stream.h"

namespace fi {

// Whether the storage holds a stream of protected content. No storage can be opened yet, so none
// does.
bool CheckDrmContentStream(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_STORAGE_RIGHTS_MANAGEMENT_H_
