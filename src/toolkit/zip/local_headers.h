// The members of a ZIP package by the local headers in front of their data: for a package whose
// central directory is cut off or damaged.
#ifndef FI_TOOLKIT_ZIP_LOCAL_HEADERS_H_
#define FI_TOOLKIT_ZIP_LOCAL_HEADERS_H_

#include <cstdint>
#include <memory>

#include "toolkit/io/handle_reader.h"

namespace fi::zip {

// A central directory as the package should have had it.
struct RebuiltDirectory {
  std::unique_ptr<uint8_t[]> bytes;
  uint64_t size = 0;
};

// Follows the members from the start of the file to the first that is damaged or cut, which counts
// as well when its header is whole. A backslash in a name becomes a slash. False when the file does
// not begin with a member or memory runs out.
bool RebuildDirectory(const io::HandleReader& reader, RebuiltDirectory* directory);

}  // namespace fi::zip

#endif  // FI_TOOLKIT_ZIP_LOCAL_HEADERS_H_
