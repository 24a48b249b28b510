// XML without a declaration: text that opens with the tag of an element and ends with the tag that
// closes it. A document that is cut short is not told from text about markup.
#ifndef FI_PROBES_TEXT_FORMATS_XML_ELEMENT_H_
#define FI_PROBES_TEXT_FORMATS_XML_ELEMENT_H_

#include <string_view>

#include "engine/id_stream.h"

namespace fi {

// `text` is the start of the file, of 8-bit characters. Moves the stream, which is read at its end.
bool IsXmlElement(IdentificationStream* stream, std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_TEXT_FORMATS_XML_ELEMENT_H_
