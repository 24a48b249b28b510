// Resource forks of the Macintosh in a file of their own, fonts for the data fork among them
// (Inside Macintosh, More Macintosh Toolbox).
#ifndef FI_PROBES_SYSTEM_RESOURCE_FORK_H_
#define FI_PROBES_SYSTEM_RESOURCE_FORK_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatResourceFork or kNoMatch. The data begin at 256 and the map follows them up to the end of
// the file.
FormatId ResourceForkProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_SYSTEM_RESOURCE_FORK_H_
