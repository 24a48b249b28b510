// yEnc: 8-bit data behind a "=ybegin" line that names the length of the data lines.
#ifndef FI_PROBES_ENCODED_YENC_H_
#define FI_PROBES_ENCODED_YENC_H_

#include <string_view>

#include "formatid/formatid.h"
#include "stream/id_stream.h"
#include "stream/line_reader.h"

namespace fi {

// What the header line begins with, in lower case.
inline constexpr std::string_view kYEncBegin = "=ybegin ";

// The identifier for yEnc data, by its part number, or kNoMatch. `line` holds the header line,
// ASCII text in lower case, and is used up; the stream stands behind it.
FormatId IdentifyYEnc(LineBuffer& line, IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_ENCODED_YENC_H_
