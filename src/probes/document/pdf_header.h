// PDF files with something before their header. ISO 32000 puts "%PDF-" at the start; viewers take
// it anywhere in the first kilobyte, behind white space, a print job's wrapping or stray bytes.
#ifndef FI_PROBES_DOCUMENT_PDF_HEADER_H_
#define FI_PROBES_DOCUMENT_PDF_HEADER_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatPdf or kNoMatch. Looks at the first 2 KB of the file, and at the last where what stands
// before the header is text. A file that begins with the mark of UTF-8 is left to the rules for
// text.
FormatId PdfHeaderProbe(IdentificationStream* stream);

// The same for any file: whether it is a PDF.
bool HasPdfHeader(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_DOCUMENT_PDF_HEADER_H_
