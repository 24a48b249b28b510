// XML documents by the vocabulary of their root, and HTML.
#ifndef FI_PROBES_MARKUP_MARKUP_H_
#define FI_PROBES_MARKUP_MARKUP_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"
#include "stream/markup_reader.h"

namespace fi {

// The identifier of the vocabulary; kFormatXml for a declared document of another, kFormatHtml, or
// kNoMatch. Looks at the prologue, 64 KB at most, the root's tag and, for HTML, the first kilobyte.
// A file with a byte-order mark is left to the rules for text, which take it by the mark.
FormatId MarkupProbe(IdentificationStream* stream);

// The same for text that is stored in a known form.
FormatId IdentifyMarkup(IdentificationStream* stream, const TextForm& form);

}  // namespace fi

#endif  // FI_PROBES_MARKUP_MARKUP_H_
