// What a ZIP package holds.
#ifndef FI_PROBES_PACKAGE_DISPATCHER_H_
#define FI_PROBES_PACKAGE_DISPATCHER_H_

#include <cstdint>

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// The format of the package; 1802 when it holds none that is known or cannot be opened as one, 0
// for an iWork archive without a known document. `*extra` is the status that goes with 1834, else
// 0. The position of the stream stays.
FormatId PackageProbe(IdentificationStream* stream, int32_t* extra);

// The same for an opened package view.
FormatId FormatOfPackage(IOHandle* package, const IdentificationJob& job, int32_t* extra);

}  // namespace fi

#endif  // FI_PROBES_PACKAGE_DISPATCHER_H_
