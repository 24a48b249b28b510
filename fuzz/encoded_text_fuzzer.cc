// Any bytes as encoded text.

#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/line_probe_run.h"
#include "probes/encoded/encoded_text.h"

namespace {

constexpr FormatId kIds[] = {4050, 4051, 4052, 4053, 4054, 4055, 4056, 4057};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string file(reinterpret_cast<const char*>(data), size);
  fi::fuzz::CheckLineProbe(file, kIds, fi::EncodedTextProbe);
  return 0;
}
