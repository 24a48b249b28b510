// iWork packages of the generation whose document is XML.
#ifndef FI_PROBES_IWORK_IWORK_XML_H_
#define FI_PROBES_IWORK_IWORK_XML_H_

#include "formatid/formatid.h"
#include "formatid/io.h"
#include "stream/package_member.h"

namespace fi {

// kGoOn when the package has no build history or no index; otherwise the chain ends with
// what the last known element of the index says, or with no answer.
PackageAnswer IworkXmlPackageProbe(IOHandle* package);

}  // namespace fi

#endif  // FI_PROBES_IWORK_IWORK_XML_H_
