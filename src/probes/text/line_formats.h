// Text formats that the build of their first lines tells: subtitles, differences, message
// catalogues, references, settings, data by the line with a checksum, and encoded data too short
// for statistics.
#ifndef FI_PROBES_TEXT_LINE_FORMATS_H_
#define FI_PROBES_TEXT_LINE_FORMATS_H_

#include <string_view>

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// The identifier of the format, or kNoMatch. `extension` is in upper case: settings, which have no
// grammar of their own, need one.
FormatId LineFormatProbe(std::string_view text, bool isCut, std::string_view extension);

}  // namespace fi

#endif  // FI_PROBES_TEXT_LINE_FORMATS_H_
