// Computer Graphics Metafiles (ISO/IEC 8632): binary, which begin with the elements "begin
// metafile" and "metafile version", or clear text, which begin with the word BEGMF and a name in
// quotes.
#ifndef FI_PROBES_IMAGE_CGM_H_
#define FI_PROBES_IMAGE_CGM_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatCgm or kNoMatch.
FormatId CgmProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_IMAGE_CGM_H_
