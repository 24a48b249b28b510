// What a format is called when the storage that holds it is rights-managed.
#ifndef FI_API_PROTECTED_FORMATS_H_
#define FI_API_PROTECTED_FORMATS_H_

#include "formatid/formatid.h"

namespace fi {

// The rights-managed counterpart of `id`; 1316 for every format that has none of its own.
FormatId ProtectedFormat(FormatId id);

}  // namespace fi

#endif  // FI_API_PROTECTED_FORMATS_H_
