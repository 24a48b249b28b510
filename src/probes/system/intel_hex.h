// Object files as hexadecimal records: Intel HEX, Motorola S-records.
#ifndef FI_PROBES_SYSTEM_INTEL_HEX_H_
#define FI_PROBES_SYSTEM_INTEL_HEX_H_

#include <string_view>

namespace fi {

// Whether the whole lines of `text`, eight at most, are such records.
bool IsObjectText(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_SYSTEM_INTEL_HEX_H_
