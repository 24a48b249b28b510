// YAML 1.2 documents: directives, a line "---", and block collections. Only a name that says so
// makes them more than prose with colons.
#ifndef FI_PROBES_TEXT_YAML_H_
#define FI_PROBES_TEXT_YAML_H_

#include <string_view>

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatYaml or kNoMatch. `extension` is in upper case.
FormatId YamlProbe(std::string_view text, const char* extension);

}  // namespace fi

#endif  // FI_PROBES_TEXT_YAML_H_
