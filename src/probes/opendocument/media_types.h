// The format by the media type of a package. The media type is the text of the member "mimetype".
// Many formats since OpenDocument store this member first and uncompressed, so the text stands at a
// fixed place of the file.
#ifndef FI_PROBES_OPENDOCUMENT_MEDIA_TYPES_H_
#define FI_PROBES_OPENDOCUMENT_MEDIA_TYPES_H_

#include <cstdint>
#include <string_view>

#include "formatid/formatid.h"
#include "formatid/io.h"

namespace fi {

// A longer media type is none that is known.
inline constexpr uint32_t kMaxMediaType = 127;

// The format of a media type; kNoMatch for an unknown type. `version12`: the text beside the type
// states OpenDocument 1.2. `package` is null, or the package to read the OpenDocument generator
// from.
FormatId FormatOfMediaType(IOHandle* package, std::string_view mediaType, bool version12);

// The format by the member "mimetype", blanks behind the text aside; kNoMatch when there is none.
FormatId FormatOfMimetypeMember(IOHandle* package);

// The same by the place of that member's text at the beginning of a file. Moves the position.
FormatId FormatOfMimetypeAtHead(IOHandle* file);

}  // namespace fi

#endif  // FI_PROBES_OPENDOCUMENT_MEDIA_TYPES_H_
