// Internet shortcuts: a text of sections and keys, as the profile functions of Windows read it,
// with the address under the key URL of the section InternetShortcut.
#ifndef FI_PROBES_CONTENT_LINK_TEXT_H_
#define FI_PROBES_CONTENT_LINK_TEXT_H_

#include <string_view>

#include "engine/id_stream.h"
#include "formatid/formatid.h"

namespace fi {

// kFormatInternetShortcut or kNoMatch. Looks at the first 4 KB of the file.
FormatId LinkTextProbe(IdentificationStream* stream);

// Whether `text` begins with a shortcut's section and holds its address.
bool IsLinkText(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_CONTENT_LINK_TEXT_H_
