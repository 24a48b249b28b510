// TrueType and OpenType fonts: a 12-byte offset table, then a directory of 16-byte records, sorted
// by the four letters that begin each.
#ifndef FI_PROBES_FONT_SFNT_H_
#define FI_PROBES_FONT_SFNT_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// Whether the directory of the font whose offset table stands at `base` lists the tables that every
// usable font has.
bool SfntDirectoryProbe(IdentificationStream* stream, uint32_t base);

}  // namespace fi

#endif  // FI_PROBES_FONT_SFNT_H_
