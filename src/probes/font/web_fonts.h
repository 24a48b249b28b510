// Fonts packed for the web. WOFF and WOFF2 (W3C) have the size of the file behind their mark,
// Embedded OpenType begins with the size.
#ifndef FI_PROBES_FONT_WEB_FONTS_H_
#define FI_PROBES_FONT_WEB_FONTS_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatWoff or kNoMatch.
FormatId WoffProbe(IdentificationStream* stream);

// kFormatWoff2 or kNoMatch.
FormatId Woff2Probe(IdentificationStream* stream);

// kFormatEmbeddedOpenType or kNoMatch.
FormatId EmbeddedOpenTypeProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_FONT_WEB_FONTS_H_
