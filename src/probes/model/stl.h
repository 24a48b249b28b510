// Models for stereolithography in their binary form: 80 free bytes, the number of triangles, and 50
// bytes for each. There is no mark but the size of the file.
#ifndef FI_PROBES_MODEL_STL_H_
#define FI_PROBES_MODEL_STL_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatStlBinary or kNoMatch.
FormatId StlProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_MODEL_STL_H_
