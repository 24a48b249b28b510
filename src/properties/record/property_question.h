// What a family of properties is asked with.
#ifndef FI_PROPERTIES_RECORD_PROPERTY_QUESTION_H_
#define FI_PROPERTIES_RECORD_PROPERTY_QUESTION_H_

#include "formatid/formatid.h"
#include "properties/record/property_set.h"
#include "stream/id_stream.h"

namespace fi {

// A family reads through the stream from any place, may open what the handle holds, and leaves both
// anywhere.
struct PropertyQuestion {
  IdentificationStream* stream;  // borrowed
  FormatId id;                   // what the file was identified as
};

}  // namespace fi

#endif  // FI_PROPERTIES_RECORD_PROPERTY_QUESTION_H_
