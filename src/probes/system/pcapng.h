// Captures of network traffic (draft-ietf-opsawg-pcapng): blocks of a type and a length, of which
// the first is a section header with a mark of the byte order.
#ifndef FI_PROBES_SYSTEM_PCAPNG_H_
#define FI_PROBES_SYSTEM_PCAPNG_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatPcapng or kNoMatch.
FormatId PcapngProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_SYSTEM_PCAPNG_H_
