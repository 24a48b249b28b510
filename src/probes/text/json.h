// JSON (RFC 8259): one value, an object or an array, in strict grammar.
#ifndef FI_PROBES_TEXT_JSON_H_
#define FI_PROBES_TEXT_JSON_H_

#include <string_view>

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatJson or kNoMatch. A text that is cut must hold one member of an object, or two elements of
// an array, before the cut.
FormatId JsonProbe(std::string_view text, bool isCut);

}  // namespace fi

#endif  // FI_PROBES_TEXT_JSON_H_
