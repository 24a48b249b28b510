// iWork packages of the generation whose document is an archive of Snappy-compressed messages.
#ifndef FI_PROBES_IWORK_IWORK_ARCHIVE_H_
#define FI_PROBES_IWORK_IWORK_ARCHIVE_H_

#include "formatid/formatid.h"
#include "formatid/io.h"
#include "stream/identification_job.h"
#include "stream/package_member.h"

namespace fi {

// kGoOn with `*id` 1802 when the package has no document archive. Otherwise the chain ends: `*id`
// is what the first known message of the archive says, 1834 where it cannot be decoded, 0 where no
// known message is in it. An encrypted package whose decryption cannot be set up leaves 1834, and
// the answer is the status of the set-up.
GoOn IworkArchiveProbe(IOHandle* package, const IdentificationJob& job, FormatId* id);

}  // namespace fi

#endif  // FI_PROBES_IWORK_IWORK_ARCHIVE_H_
