// Packages that are known by the names of their members, some with a word in one of them.
#ifndef FI_PROBES_PACKAGE_MEMBER_NAMES_H_
#define FI_PROBES_PACKAGE_MEMBER_NAMES_H_

#include "formatid/formatid.h"
#include "formatid/io.h"

namespace fi {

// By members of a fixed name; kNoMatch when no known set of them is there.
FormatId FormatOfMembers(IOHandle* package);

// By members of which a part of the name is fixed.
FormatId FormatOfNames(IOHandle* package);

// Office Open XML and XPS packages without their relationships and content types. A part that no
// other kind of document has tells the kind, but not whether the document is a template.
FormatId FormatOfCutDocument(IOHandle* package);

// Java archives, which lack what would make them another format: the last that is asked.
FormatId FormatOfJavaArchive(IOHandle* package);

}  // namespace fi

#endif  // FI_PROBES_PACKAGE_MEMBER_NAMES_H_
