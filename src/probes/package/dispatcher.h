// What a ZIP package holds.
#ifndef FI_PROBES_PACKAGE_DISPATCHER_H_
#define FI_PROBES_PACKAGE_DISPATCHER_H_

#include <cstdint>

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

struct PackageFormat {
  FormatId id = kNoMatch;
  uint32_t status = 0;  // of a decryption that failed
};

// The format of the package; kFormatZip for unknown content and for a file that cannot be opened as
// a package, kNoMatch for an iWork archive without a known document. The position of the stream
// stays.
PackageFormat PackageProbe(IdentificationStream* stream);

// The same for an opened package view.
PackageFormat FormatOfPackage(IOHandle* package, const IdentificationJob& job);

}  // namespace fi

#endif  // FI_PROBES_PACKAGE_DISPATCHER_H_
