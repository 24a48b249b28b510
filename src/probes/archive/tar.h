// Tape archives: a header of 512 bytes (POSIX pax, "ustar Interchange Format"), which holds the sum
// of its own bytes in octal. Archives older than the mark "ustar" have it too.
#ifndef FI_PROBES_ARCHIVE_TAR_H_
#define FI_PROBES_ARCHIVE_TAR_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatTar or kNoMatch.
FormatId TarProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_ARCHIVE_TAR_H_
