// Settings by section (INI): a name in brackets, then a line with an equals sign. The text alone is
// too little: the extension of the file, in capitals, must agree.
#ifndef FI_PROBES_TEXT_SETTINGS_H_
#define FI_PROBES_TEXT_SETTINGS_H_

#include <string_view>

namespace fi {

bool IsSettings(std::string_view text, std::string_view extension);

}  // namespace fi

#endif  // FI_PROBES_TEXT_SETTINGS_H_
