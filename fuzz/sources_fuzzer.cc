// Any bytes as a file that is opened in every way, under any flags, without limits and with some.
//
// Input: a byte of flags, one that chooses the name, four that choose the limits, then the file.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/source_comparison.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 6) return 0;
  const std::string file(reinterpret_cast<const char*>(data + 6), size - 6);
  fi::fuzzing::SourceComparison comparison(file, fi::fuzzing::NameFor(data[1]), data[0] & 0x1Fu);
  comparison.Run(fi::fuzzing::LimitsFor({data[2], data[3], data[4], data[5]}));
  return 0;
}
