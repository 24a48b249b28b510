// ESRI shapefiles (ESRI Shapefile Technical Description): a code and the size of the file in
// big-endian order, then a version and the kind of shape in little-endian order.
#ifndef FI_PROBES_MODEL_SHAPEFILE_H_
#define FI_PROBES_MODEL_SHAPEFILE_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatShapefile or kNoMatch.
FormatId ShapefileProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_MODEL_SHAPEFILE_H_
