// Entries of a directory (LDIF): behind comments and the version, the first distinguished name.
#ifndef FI_PROBES_DATABASE_LDIF_H_
#define FI_PROBES_DATABASE_LDIF_H_

#include <string_view>

namespace fi {

bool IsLdif(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_DATABASE_LDIF_H_
