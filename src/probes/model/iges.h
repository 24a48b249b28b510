// IGES models (IGES 5.3, fixed line format): records of 80 columns. Column 73 holds the letter of
// the section, S for the first, columns 74 to 80 the number of the record in it.
#ifndef FI_PROBES_MODEL_IGES_H_
#define FI_PROBES_MODEL_IGES_H_

#include <string_view>

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatIges or kNoMatch.
FormatId IgesProbe(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_MODEL_IGES_H_
