// Matroska and WebM (RFC 8794, RFC 9559): an EBML header, whose elements (identifier, size, data)
// name the type of the document.
#ifndef FI_PROBES_MEDIA_MATROSKA_H_
#define FI_PROBES_MEDIA_MATROSKA_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatMatroska, kFormatWebM or kNoMatch.
FormatId MatroskaProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_MEDIA_MATROSKA_H_
