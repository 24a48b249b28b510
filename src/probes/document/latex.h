// LaTeX documents: a line that sets the class (LaTeX 2e) or the style (LaTeX 2.09) of the document.
#ifndef FI_PROBES_DOCUMENT_LATEX_H_
#define FI_PROBES_DOCUMENT_LATEX_H_

#include <string_view>

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatLatex or kNoMatch.
FormatId LatexProbe(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_DOCUMENT_LATEX_H_
