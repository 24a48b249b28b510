// Drawing packages: a RIFF drawing inside a ZIP.
#ifndef FI_PROBES_PACKAGE_DRAWING_PACKAGE_H_
#define FI_PROBES_PACKAGE_DRAWING_PACKAGE_H_

#include "formatid/formatid.h"
#include "formatid/io.h"
#include "stream/package_member.h"

namespace fi {

// Goes on when the package has none of the drawing members. Otherwise the chain ends once the
// deciding bytes could be read, known or not. The answer is kFormatCorelDrawPackage,
// kFormatCorelDrawCdthPackage or none.
PackageAnswer DrawingPackageProbe(IOHandle* package);

}  // namespace fi

#endif  // FI_PROBES_PACKAGE_DRAWING_PACKAGE_H_
