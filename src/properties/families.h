// Reads the properties of a file whose format is known. A family of formats has a file pair of its
// own in this folder; families.cc is the one that knows them all.
#ifndef FI_PROPERTIES_FAMILIES_H_
#define FI_PROPERTIES_FAMILIES_H_

#include "formatid/formatid.h"
#include "properties/property_set.h"
#include "stream/id_stream.h"

namespace fi {

// What a family is asked with. It reads through the stream from any place, may open what the handle
// holds, and leaves both anywhere.
struct PropertyQuestion {
  IdentificationStream* stream;  // borrowed
  FormatId id;                   // what the file was identified as
};

// Reads what the family of `question.id` knows, and of a format without a family what its text
// tells. Properties of damaged files are absent or say so; the identifier stays whatever they say.
void ReadProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_FAMILIES_H_
