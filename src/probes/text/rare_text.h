// Text that the fixed fallback leaves unknown: UTF-32, UTF-16 without a mark in scripts other than
// the Latin one, and small texts in 8-bit and East Asian encodings, which have no blanks.
#ifndef FI_PROBES_TEXT_RARE_TEXT_H_
#define FI_PROBES_TEXT_RARE_TEXT_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// The identifier of the encoding's plain text, or kNoMatch. Looks at the first 2 KB.
FormatId RareTextProbe(IdentificationStream* stream);

// Whether the file begins with the mark of UTF-32, and a character follows.
bool IsMarkedUtf32(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_TEXT_RARE_TEXT_H_
