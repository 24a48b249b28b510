// Where the central directory of a ZIP package lies. It ends in front of the end record, which is
// the last thing in the file but for a comment; a ZIP64 package has wider copies of the record's
// numbers in front of that. Offsets count from the package's first byte: what was put in front of
// it, such as the program of a self-extracting archive, shifts all of them.
#ifndef FI_TOOLKIT_ZIP_END_RECORD_H_
#define FI_TOOLKIT_ZIP_END_RECORD_H_

#include <cstdint>

#include "toolkit/io/handle_reader.h"

namespace fi::zip {

// The last `size` bytes of a file, from `offset` on.
struct Tail {
  const uint8_t* bytes;
  uint32_t size;
  uint64_t offset;
};

struct DirectoryPlace {
  uint64_t start;  // in the file
  uint64_t size;   // bytes
  uint64_t shift;  // to be added to the offsets in the directory
};

// Finds an end record with a directory, beginning in `tail`. Of several the last record with a
// comment that ends with the file counts, else the last. False without such a record.
bool FindDirectory(const io::HandleReader& reader, const Tail& tail, DirectoryPlace* place);

}  // namespace fi::zip

#endif  // FI_TOOLKIT_ZIP_END_RECORD_H_
