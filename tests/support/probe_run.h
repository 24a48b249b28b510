// Runs probes over samples of tests/data.
#ifndef FI_TESTS_SUPPORT_PROBE_RUN_H_
#define FI_TESTS_SUPPORT_PROBE_RUN_H_

#include <cstdint>
#include <functional>
#include <string_view>

#include "formatid/formatid.h"
#include "stream/id_stream.h"
#include "tests/support/memory_handle.h"

namespace fi::testing {

using Probe = std::function<FormatId(IdentificationStream*)>;

// The answer over `handle`. A `used` stream has handed out a byte, so that its buffer is filled.
FormatId RunProbe(const Probe& probe, MemoryHandle& handle, bool used = false);

// Tests the probe over each sample of tests/data/`file`, whose columns are
//
//   id | name | bytes | limits
//
// `id` is the answer (0: no match) for every kind of handle and stream: reads of any size and of
// one byte, 32- and 64-bit positions, a fresh stream and a used one. These also agree on the sample
// cut at each length; they read no byte more than a few times, nor seek more often. `limits` are
// words, all optional:
//
//   12:1196   cut to 12 bytes or more the answer is 1196; below the first such length, no match
//   <4096     a fresh stream reads at most 4096 bytes
void ExpectSamples(std::string_view file, const Probe& probe);

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_PROBE_RUN_H_
