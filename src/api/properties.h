// Properties as they cross the interface.
#ifndef FI_API_PROPERTIES_H_
#define FI_API_PROPERTIES_H_

#include "formatid/properties.h"
#include "stream/id_stream.h"

namespace fi {

// Leaves the record without properties; nothing for null.
void ClearProperties(FIProperties* to);

// Reads the properties of a file of that format. `candidates` are the format's PRONOM identifiers,
// divided by commas.
void FillProperties(IdentificationStream* stream, FormatId id, const char* candidates,
                    FIProperties* to);

}  // namespace fi

#endif  // FI_API_PROPERTIES_H_
