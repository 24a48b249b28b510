// The probes that signature programs hand a file to, by probe code.
#ifndef FI_ENGINE_PROBE_TABLE_H_
#define FI_ENGINE_PROBE_TABLE_H_

#include <cstdint>

#include "engine/interpreter.h"
#include "formatid/formatid.h"

namespace fi {

// What a probe is called with.
struct ProbeCall {
  SignatureRun& run;
  uint16_t code;
};

struct ProbeEntry {
  uint16_t code;
  FormatId (*run)(const ProbeCall& call);
};

// The entry of a code, or null when the code is not in the table, which is not the same as a probe
// that answers no match: it changes how the program goes on.
const ProbeEntry* FindProbe(uint16_t code);

}  // namespace fi

#endif  // FI_ENGINE_PROBE_TABLE_H_
