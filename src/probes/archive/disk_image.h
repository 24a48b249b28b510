// Images of discs and disks, whose marks stand far from the start: optical discs at sector 16
// (ECMA-119, ECMA-167), disk images of Apple and of virtual machines in a trailer of 512 bytes.
#ifndef FI_PROBES_ARCHIVE_DISK_IMAGE_H_
#define FI_PROBES_ARCHIVE_DISK_IMAGE_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatIso9660 or kNoMatch.
FormatId OpticalDiscProbe(IdentificationStream* stream);

// kFormatAppleDiskImage or kNoMatch.
FormatId AppleDiskImageProbe(IdentificationStream* stream);

// kFormatVhd or kNoMatch. A disk that grows has a copy of its trailer at the start.
FormatId VirtualHardDiskProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_ARCHIVE_DISK_IMAGE_H_
