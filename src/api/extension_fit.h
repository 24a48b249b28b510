// Whether the name of a file fits its format.
#ifndef FI_API_EXTENSION_FIT_H_
#define FI_API_EXTENSION_FIT_H_

#include <cstdint>
#include <string_view>

#include "formatid/formatid.h"

namespace fi {

// kFiFitUnknown, kFiFits or kFiFitsNot. `name` has no directories; `known` lists the extensions of
// the format `id`, divided by commas.
uint16_t ExtensionFit(std::string_view name, FormatId id, std::string_view known);

}  // namespace fi

#endif  // FI_API_EXTENSION_FIT_H_
