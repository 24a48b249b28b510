// Settings by section (INI): a name in brackets, then a line with an equals sign. Too little
// without the extension of the file, in capitals.
#ifndef FI_PROBES_TEXT_SETTINGS_H_
#define FI_PROBES_TEXT_SETTINGS_H_

#include <string_view>

namespace fi {

bool IsSettings(std::string_view text, std::string_view extension);

}  // namespace fi

#endif  // FI_PROBES_TEXT_SETTINGS_H_
