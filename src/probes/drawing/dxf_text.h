// DXF drawings in text form (AutoCAD DXF Reference): pairs of lines, a group code and its value.
// The first pair that is no comment opens a section, the second names it.
#ifndef FI_PROBES_DRAWING_DXF_TEXT_H_
#define FI_PROBES_DRAWING_DXF_TEXT_H_

#include <string_view>

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatDxfText or kNoMatch. Looks at the first 4 KB of the file.
FormatId DxfTextProbe(IdentificationStream* stream);

// Whether the drawing's first section opens in `text`, the head of a file without its mark.
bool IsDxfText(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_DRAWING_DXF_TEXT_H_
