// Writes iWork archives: contents as chunks of uncompressed Snappy blocks.
#ifndef FI_TESTS_SUPPORT_IWORK_WRITER_H_
#define FI_TESTS_SUPPORT_IWORK_WRITER_H_

#include <cstddef>
#include <cstdint>
#include <string>

#include "tests/support/bytes.h"

namespace fi::testing {

// A Snappy block of one literal of up to 16 MB.
inline std::string SnappyBlock(const std::string& content) {
  std::string block;
  uint64_t size = content.size();
  for (; size >= 0x80; size >>= 7) block += static_cast<char>(size | 0x80);
  block += static_cast<char>(size);
  return content.empty() ? block : block + '\xF8' + LittleEndian(content.size() - 1, 3) + content;
}

inline std::string WriteIworkArchive(const std::string& content, size_t bytesPerChunk) {
  std::string archive;
  for (size_t offset = 0; offset < content.size(); offset += bytesPerChunk) {
    const std::string block = SnappyBlock(content.substr(offset, bytesPerChunk));
    archive += '\0' + LittleEndian(block.size(), 3) + block;
  }
  return archive;
}

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_IWORK_WRITER_H_
