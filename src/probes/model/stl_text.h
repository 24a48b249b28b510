// STL models in text form: "solid", a name, and facets with their normals.
#ifndef FI_PROBES_MODEL_STL_TEXT_H_
#define FI_PROBES_MODEL_STL_TEXT_H_

#include <string_view>

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatStlText or kNoMatch. Looks at the first kilobyte.
FormatId StlTextProbe(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_MODEL_STL_TEXT_H_
