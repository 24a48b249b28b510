// Text formats that plain text can be told apart into when its head is read: data, sources, models
// and keys in text form. They have no signature at a fixed place, or one that only text makes
// certain.
#ifndef FI_TABLES_TEXT_PROBES_H_
#define FI_TABLES_TEXT_PROBES_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// The identifier of the text's format, or kNoMatch. `extension` is in upper case, empty where there
// is none. Of a text with a byte-order mark also the formats that signatures and probes name only
// where no mark stands before them. Looks at the first 4 KB of the text, and of marked markup at
// its prologue.
FormatId TextFormatProbe(IdentificationStream* stream, const char* extension);

}  // namespace fi

#endif  // FI_TABLES_TEXT_PROBES_H_
