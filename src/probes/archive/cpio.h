// cpio archives: a header in hexadecimal (POSIX "newc", with or without checksums), octal or binary
// words of either order, then the name of the first member.
#ifndef FI_PROBES_ARCHIVE_CPIO_H_
#define FI_PROBES_ARCHIVE_CPIO_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatCpio or kNoMatch.
FormatId CpioProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_ARCHIVE_CPIO_H_
