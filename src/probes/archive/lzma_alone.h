// LZMA data without a container (.lzma): a byte of coder properties, the size of the dictionary,
// the size of the data, then the coder, whose first byte is 0. There is no mark.
#ifndef FI_PROBES_ARCHIVE_LZMA_ALONE_H_
#define FI_PROBES_ARCHIVE_LZMA_ALONE_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatLzma or kNoMatch. Weak: for files that are named .lzma.
FormatId LzmaAloneProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_ARCHIVE_LZMA_ALONE_H_
