// The brands of ISO base media files (ISO/IEC 14496-12): four characters, registered with the MP4
// registration authority, that say which specification the file follows. The first box, "ftyp" or
// that of a segment, "styp", names the major one and those that the file is compatible with.
#ifndef FI_PROBES_MEDIA_ISO_BRANDS_H_
#define FI_PROBES_MEDIA_ISO_BRANDS_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// The identifier that the major brand stands for, or where it is not known, the first known
// compatible one. kNoMatch when there is none, or no such box.
FormatId IsoBrandProbe(IdentificationStream* stream);

// The identifier of the major brand, where it names one kind of file whatever the compatible brands
// are: audio, a camera's images, a telephone's media. Else kNoMatch.
FormatId DecidingMajorBrand(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_MEDIA_ISO_BRANDS_H_
