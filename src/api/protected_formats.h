// The identifiers of formats in a rights-managed storage.
#ifndef FI_API_PROTECTED_FORMATS_H_
#define FI_API_PROTECTED_FORMATS_H_

#include "formatid/formatid.h"

namespace fi {

// The rights-managed counterpart of `id`; kFormatRightsManagedOther for a format without its own.
FormatId ProtectedFormat(FormatId id);

}  // namespace fi

#endif  // FI_API_PROTECTED_FORMATS_H_
