// Containers that are valid but for some places, opened in every way: where random bytes seldom
// pass a header, these lead into members, streams and decrypted packages.
//
// Input: a byte of flags, one that chooses the name, four that choose the limits, then the choices
// of structure_builder.h. What they leave over changes the file as a whole.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/source_comparison.h"
#include "fuzz/structure_builder.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 8) return 0;
  fi::fuzzing::Choices choices(data + 6, size - 6);
  fi::fuzzing::StructureBuilder builder(choices);
  std::string file = builder.Build();
  builder.Change(&file, 16);
  fi::fuzzing::SourceComparison comparison(file, fi::fuzzing::NameFor(data[1]), data[0] & 0x1Fu);
  comparison.Run(fi::fuzzing::LimitsFor({data[2], data[3], data[4], data[5]}));
  return 0;
}
