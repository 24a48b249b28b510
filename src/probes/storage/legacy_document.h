// Workbooks and Word documents of the time of Office 95, which share a class of storages with their
// successors.
#ifndef FI_PROBES_STORAGE_LEGACY_DOCUMENT_H_
#define FI_PROBES_STORAGE_LEGACY_DOCUMENT_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// A workbook or a Word document, by the first record of "Book" or "Workbook", or by the version in
// "WordDocument". A file that is no compound document is taken for a Word document; kNoMatch when
// none of the streams is there.
FormatId ProbeLegacyDocument(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_STORAGE_LEGACY_DOCUMENT_H_
