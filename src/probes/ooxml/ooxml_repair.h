// Packages of the Open Packaging Conventions beyond the documents that ooxml.h knows as they are
// usually written.
#ifndef FI_PROBES_OOXML_OOXML_REPAIR_H_
#define FI_PROBES_OOXML_OOXML_REPAIR_H_

#include "formatid/formatid.h"
#include "formatid/io.h"

namespace fi {

// The format of a package view by its main part, as ECMA-376 Part 2 compares names: a target may
// begin at the root, and letters count without regard to case. Where the relationships are missing,
// an entry of the content types that only a main part can have decides. kNoMatch when none does.
FormatId RepairedOfficeOpenXml(IOHandle* view);

}  // namespace fi

#endif  // FI_PROBES_OOXML_OOXML_REPAIR_H_
