// HDF5 data (The HDF Group, HDF5 File Format): a superblock, before which a block of the user may
// stand whose size is 512 bytes or a power of two above.
#ifndef FI_PROBES_DATABASE_HDF5_H_
#define FI_PROBES_DATABASE_HDF5_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatHdf5 or kNoMatch.
FormatId Hdf5Probe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_DATABASE_HDF5_H_
