// Compound documents beyond those that the signatures and the classifier know: told by the class
// identifier of the storage, else by a stream that only one program writes.
#ifndef FI_PROBES_STORAGE_UNKNOWN_STORAGES_H_
#define FI_PROBES_STORAGE_UNKNOWN_STORAGES_H_

#include "formatid/formatid.h"
#include "platform/class_id.h"
#include "stream/id_stream.h"

namespace fi {

// A format from kFormatWindowsInstallerPackage to kFormatInventor, or kNoMatch. The stream is not
// moved.
FormatId ProbeUnknownStorage(IdentificationStream* stream, const ClassId& classId);

}  // namespace fi

#endif  // FI_PROBES_STORAGE_UNKNOWN_STORAGES_H_
