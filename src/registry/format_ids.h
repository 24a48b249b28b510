// A constant kFormat<Symbol> for each format that is known by name.
#ifndef FI_REGISTRY_FORMAT_IDS_H_
#define FI_REGISTRY_FORMAT_IDS_H_

#include "formatid/formatid.h"

namespace fi {

#define FI_FORMAT(number, symbol, name, category, mime, extensions, puids) \
  inline constexpr FormatId kFormat##symbol = number;
#define FI_FORMAT_UNNAMED(number, name, category, mime, extensions, puids)
#include "registry/formats.def"

}  // namespace fi

#endif  // FI_REGISTRY_FORMAT_IDS_H_
