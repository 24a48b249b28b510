// Writes compound files for tests: well-formed ones, in which a test then breaks what it wants.
#ifndef FI_TESTS_SUPPORT_COMPOUND_FILE_WRITER_H_
#define FI_TESTS_SUPPORT_COMPOUND_FILE_WRITER_H_

#include <cstdint>
#include <string>
#include <vector>

namespace fi::testing {

// A stream or a storage with what is in it.
struct Node {
  std::u16string name;
  bool isStorage = false;
  std::string data;     // of a stream
  std::string classId;  // 16 bytes, or empty for zeros
  std::vector<Node> children;
};

Node Stream(std::u16string name, std::string data);
Node Folder(std::u16string name, std::vector<Node> children, std::string classId = "");

struct CompoundOptions {
  uint32_t sectorShift = 9;
  bool backwards = false;  // every chain runs from high sectors to low ones
};

// The sectors hold, in this order: FAT, DIFAT, directory, the streams as they are met, the mini
// stream, the mini FAT. Entries are numbered as they are met: the root 0, then each storage's
// children in the order given, before the children of the first of them. Siblings form a balanced
// tree, in the format's order if that is the order given.
std::string WriteCompoundFile(const std::vector<Node>& children,
                              const CompoundOptions& options = {},
                              const std::string& rootClass = "");

// The word in little-endian order.
std::string Word(uint32_t word);

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_COMPOUND_FILE_WRITER_H_
