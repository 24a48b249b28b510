// Column-wise and record files of the Apache projects, which begin, and but for Avro also end, with
// a mark of letters.
#ifndef FI_PROBES_DATABASE_COLUMNAR_H_
#define FI_PROBES_DATABASE_COLUMNAR_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatApacheParquet or kNoMatch.
FormatId ParquetProbe(IdentificationStream* stream);

// kFormatApacheOrc or kNoMatch.
FormatId OrcProbe(IdentificationStream* stream);

// kFormatApacheAvro or kNoMatch.
FormatId AvroProbe(IdentificationStream* stream);

// kFormatApacheArrow or kNoMatch.
FormatId ArrowProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_DATABASE_COLUMNAR_H_
