// The export archive of a desktop mail client.
#ifndef FI_PROBES_PACKAGE_MAIL_ARCHIVE_H_
#define FI_PROBES_PACKAGE_MAIL_ARCHIVE_H_

#include "formatid/formatid.h"
#include "formatid/io.h"
#include "stream/package_member.h"

namespace fi {

// kGoOn unless the package holds its categories and one of its folders: then the chain ends with
// kFormatOutlookForMacArchive.
PackageAnswer MailArchiveProbe(IOHandle* package);

}  // namespace fi

#endif  // FI_PROBES_PACKAGE_MAIL_ARCHIVE_H_
