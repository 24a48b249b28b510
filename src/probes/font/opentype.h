// OpenType fonts beyond the plain TrueType file: collections, which list the places of their fonts,
// and fonts with outlines in the Compact Font Format.
#ifndef FI_PROBES_FONT_OPENTYPE_H_
#define FI_PROBES_FONT_OPENTYPE_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatTrueTypeCollection or kNoMatch. REQUIRES: the tag of collections has matched.
FormatId FontCollectionProbe(IdentificationStream* stream);

// kFormatOpenTypeCff or kNoMatch.
FormatId OpenTypeCffProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_FONT_OPENTYPE_H_
