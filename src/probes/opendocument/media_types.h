// What the media type of a package says: the text of its member "mimetype", which many formats
// since OpenDocument put first and store as it is, so that it stands at a fixed place of the file.
#ifndef FI_PROBES_OPENDOCUMENT_MEDIA_TYPES_H_
#define FI_PROBES_OPENDOCUMENT_MEDIA_TYPES_H_

#include <cstdint>
#include <string_view>

#include "formatid/formatid.h"
#include "formatid/io.h"

namespace fi {

// A longer media type is none that is known.
inline constexpr uint32_t kMaxMediaType = 127;

// The format of a media type; kNoMatch when it is not known. `version12`: the text beside it says
// that it is OpenDocument 1.2. `package`, where it is not null, tells an OpenDocument generator.
FormatId FormatOfMediaType(IOHandle* package, std::string_view mediaType, bool version12);

// The format by the member "mimetype", blanks behind the text aside; kNoMatch when there is none.
FormatId FormatOfMimetypeMember(IOHandle* package);

// The same by the place of that member's text at the beginning of a file. Moves the position.
FormatId FormatOfMimetypeAtHead(IOHandle* file);

}  // namespace fi

#endif  // FI_PROBES_OPENDOCUMENT_MEDIA_TYPES_H_
