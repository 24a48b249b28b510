// XML documents without a declaration and without a namespace. A text in angle brackets counts when
// the part read is well-formed and the root is no element of HTML.
#ifndef FI_PROBES_MARKUP_XML_TEXT_H_
#define FI_PROBES_MARKUP_XML_TEXT_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"
#include "stream/text_head.h"

namespace fi {

// kFormatXml, kFormatSvg for a root of that name, or kNoMatch. `window` is the head of the text
// that `stream` reads.
FormatId XmlTextProbe(IdentificationStream* stream, const TextHead& window);

}  // namespace fi

#endif  // FI_PROBES_MARKUP_XML_TEXT_H_
