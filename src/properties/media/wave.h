// WAVE audio: its coding, Broadcast Wave (EBU Tech 3285) and RF64 (EBU Tech 3306).
#ifndef FI_PROPERTIES_MEDIA_WAVE_H_
#define FI_PROPERTIES_MEDIA_WAVE_H_

#include "properties/record/property_question.h"

namespace fi {

void ReadWaveProperties(const PropertyQuestion& question, PropertySet& out);

}  // namespace fi

#endif  // FI_PROPERTIES_MEDIA_WAVE_H_
