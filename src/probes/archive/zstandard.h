// Zstandard data (RFC 8878): frames, before which others may stand that a reader skips. Those are
// common to it and LZ4.
#ifndef FI_PROBES_ARCHIVE_ZSTANDARD_H_
#define FI_PROBES_ARCHIVE_ZSTANDARD_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatZstandard, kFormatLz4 where skipped frames precede one of that, or kNoMatch.
FormatId ZstandardProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_ARCHIVE_ZSTANDARD_H_
