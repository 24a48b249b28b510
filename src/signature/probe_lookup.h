// How the interpreter finds the probe that a program hands the file to. The probes themselves stand
// in tables/probe_table.cc.
#ifndef FI_SIGNATURE_PROBE_LOOKUP_H_
#define FI_SIGNATURE_PROBE_LOOKUP_H_

#include <cstdint>

#include "formatid/formatid.h"
#include "signature/interpreter.h"

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

#endif  // FI_SIGNATURE_PROBE_LOOKUP_H_
