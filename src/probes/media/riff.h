// RIFF files (Resource Interchange File Format): "RIFF", the size of the rest, and the type of the
// form, which names the content.
#ifndef FI_PROBES_MEDIA_RIFF_H_
#define FI_PROBES_MEDIA_RIFF_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// The identifier of the form where it has one, kFormatRiff for any other, or kNoMatch. REQUIRES:
// the four letters have matched.
FormatId RiffProbe(IdentificationStream* stream);

// The identifier of a form that the fixed rules leave at "RIFF file", or kNoMatch.
FormatId OtherRiffFormProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_MEDIA_RIFF_H_
