// Rights-managed compound documents.
#ifndef FI_PROBES_PROTECTION_RIGHTS_MANAGEMENT_H_
#define FI_PROBES_PROTECTION_RIGHTS_MANAGEMENT_H_

#include "stream/id_stream.h"

namespace fi {

// Whether a binary document holds its protected content in a stream beside a notice: "DRMContent"
// behind one control character.
bool CheckDrmContentStream(IdentificationStream* stream);

// Whether the package in the compound file is protected by the rights-management transform, in
// place of an encryption with a password.
bool CheckRightsManagedTransform(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_PROTECTION_RIGHTS_MANAGEMENT_H_
