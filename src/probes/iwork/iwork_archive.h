// iWork packages of the generation whose document is an archive of Snappy-compressed messages.
#ifndef FI_PROBES_IWORK_IWORK_ARCHIVE_H_
#define FI_PROBES_IWORK_IWORK_ARCHIVE_H_

#include "formatid/formatid.h"
#include "formatid/io.h"
#include "stream/identification_job.h"
#include "stream/package_member.h"

namespace fi {

// Goes on with 1802 when the package has no document archive. Otherwise the chain ends with what
// the first known message of the archive says, with 1834 where it cannot be decoded, with kNoMatch
// where no known message is in it. An encrypted package whose decryption cannot be set up ends it
// with 1834 and the status of the set-up.
PackageAnswer IworkArchiveProbe(IOHandle* package, const IdentificationJob& job);

}  // namespace fi

#endif  // FI_PROBES_IWORK_IWORK_ARCHIVE_H_
