// Office Open XML and XPS packages (ECMA-376, ECMA-388).
#ifndef FI_PROBES_PACKAGE_OOXML_H_
#define FI_PROBES_PACKAGE_OOXML_H_

#include "formatid/formatid.h"
#include "formatid/io.h"
#include "probes/package/package_member.h"

namespace fi {

// kGoOn when the package is no OPC package at all; otherwise the chain ends, and `*id` is what its
// main part and its application's version say, or as it was.
GoOn OfficeOpenXmlProbe(IOHandle* package, FormatId* id);

}  // namespace fi

#endif  // FI_PROBES_PACKAGE_OOXML_H_
