// Workbooks that report what was found on a mobile device.
#ifndef FI_PROBES_OOXML_REPORT_WORKBOOK_H_
#define FI_PROBES_OOXML_REPORT_WORKBOOK_H_

#include "platform/package.h"

namespace fi {

// Whether the first sheet of the package's workbook is one of such a report. False as well when
// something on the way to it cannot be opened or read.
bool IsReportWorkbook(PKGHandle* package);

}  // namespace fi

#endif  // FI_PROBES_OOXML_REPORT_WORKBOOK_H_
