// Excel workbooks since Excel 97: the first record of the workbook's stream names the build that
// wrote it.
#ifndef FI_PROBES_STORAGE_WORKBOOK_H_
#define FI_PROBES_STORAGE_WORKBOOK_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// The version of the workbook, kFormatExcel97 where nothing tells it, also for a file that is no
// compound document. kNoMatch when the document has no workbook stream.
FormatId ProbeWorkbook(IdentificationStream* stream);

// Whether the document holds a workbook of Excel 97 or later, and none of an older version beside
// it.
bool IsBiff8Workbook(IOHandle* document);

}  // namespace fi

#endif  // FI_PROBES_STORAGE_WORKBOOK_H_
