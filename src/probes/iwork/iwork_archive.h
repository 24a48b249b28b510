// iWork packages of the generation whose document is an archive of Snappy-compressed messages.
#ifndef FI_PROBES_IWORK_IWORK_ARCHIVE_H_
#define FI_PROBES_IWORK_IWORK_ARCHIVE_H_

#include "formatid/formatid.h"
#include "formatid/io.h"
#include "stream/identification_job.h"
#include "stream/package_member.h"

namespace fi {

// Goes on with kFormatZip when the package has no document archive. Otherwise the chain ends: the
// first known message of the archive names the format, an archive that cannot be decoded is
// kFormatEncryptedIWork, an archive without a known message is kNoMatch. If the decryption of an
// encrypted package cannot be set up, the answer is kFormatEncryptedIWork with the status of the
// set-up.
PackageAnswer IworkArchiveProbe(IOHandle* package, const IdentificationJob& job);

}  // namespace fi

#endif  // FI_PROBES_IWORK_IWORK_ARCHIVE_H_
