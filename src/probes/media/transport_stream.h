// MPEG transport streams (ISO/IEC 13818-1): packets of 188 bytes that begin with a sync byte; on
// Blu-ray discs each has four bytes of a time stamp before it.
#ifndef FI_PROBES_MEDIA_TRANSPORT_STREAM_H_
#define FI_PROBES_MEDIA_TRANSPORT_STREAM_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatMpegTransportStream or kNoMatch.
FormatId TransportStreamProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_MEDIA_TRANSPORT_STREAM_H_
