// Models whose header holds the size of the file: binary glTF, and chunks of 3D Studio.
#ifndef FI_PROBES_MODEL_SIZED_MODELS_H_
#define FI_PROBES_MODEL_SIZED_MODELS_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatGltfBinary or kNoMatch.
FormatId GltfProbe(IdentificationStream* stream);

// kFormatThreeDStudio or kNoMatch.
FormatId ThreeDStudioProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_MODEL_SIZED_MODELS_H_
