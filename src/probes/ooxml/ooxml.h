// Office Open XML and XPS packages (ECMA-376, ECMA-388).
#ifndef FI_PROBES_OOXML_OOXML_H_
#define FI_PROBES_OOXML_OOXML_H_

#include "formatid/formatid.h"
#include "formatid/io.h"
#include "platform/package.h"
#include "stream/package_member.h"

namespace fi {

// kGoOn when the package is no OPC package at all; otherwise the chain ends with what its main
// part and its application's version say, or with no answer.
PackageAnswer OfficeOpenXmlProbe(IOHandle* package);

// The steps of the probe that rules beyond it share. The relationship that names the main part;
// false when the package has none of a known type.
bool FindMainPart(PKGHandle* package, PKGRelationship* mainPart);

// What the extended properties make of the format; as it is where the package has none.
FormatId RefineByProperties(PKGHandle* package, FormatId id);

}  // namespace fi

#endif  // FI_PROBES_OOXML_OOXML_H_
