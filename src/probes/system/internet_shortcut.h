// Internet shortcuts: a text of sections and keys, as the profile functions of Windows read it,
// with the address under the key URL of the section InternetShortcut.
#ifndef FI_PROBES_SYSTEM_INTERNET_SHORTCUT_H_
#define FI_PROBES_SYSTEM_INTERNET_SHORTCUT_H_

#include <string_view>

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatInternetShortcut or kNoMatch. Looks at the first 4 KB of the file.
FormatId InternetShortcutProbe(IdentificationStream* stream);

// Whether `text` begins with a shortcut's section and holds its address.
bool IsInternetShortcut(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_SYSTEM_INTERNET_SHORTCUT_H_
