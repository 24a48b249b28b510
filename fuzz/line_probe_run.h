// What the targets of the probes that read lines have in common.
#ifndef FI_FUZZ_LINE_PROBE_RUN_H_
#define FI_FUZZ_LINE_PROBE_RUN_H_

#include <cstdint>
#include <cstdlib>
#include <string>

#include "formatid/formatid.h"
#include "stream/id_stream.h"
#include "tests/support/memory_handle.h"

namespace fi::fuzz {

inline void Require(bool condition) {
  if (!condition) std::abort();
}

// The answer of `probe` over `file`, which must be one of `ids` or none, and the same however the
// handle delivers the bytes; no byte is read twice, and the handle stays open.
template <typename Probe, size_t kIds>
void CheckLineProbe(const std::string& file, const FormatId (&ids)[kIds], const Probe& probe) {
  FormatId answer = kNoMatch;
  for (const bool slow : {false, true}) {
    for (const bool has64Bit : {true, false}) {
      testing::MemoryHandle handle(file);
      handle.has64Bit = has64Bit;
      if (slow) handle.mostPerRead = file.size() < 4096 ? 1 : 7;
      const ScopedStream stream(&handle);
      const FormatId id = probe(stream.get());
      if (!slow && has64Bit) answer = id;
      Require(id == answer);
      Require(handle.bytesRead <= file.size());
      Require(handle.closes == 0);
    }
  }
  bool known = answer == kNoMatch;
  for (const FormatId id : ids) known = known || answer == id;
  Require(known);
}

}  // namespace fi::fuzz

#endif  // FI_FUZZ_LINE_PROBE_RUN_H_
