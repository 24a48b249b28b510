// Writes compound files for tests: well-formed ones, in which a test then breaks what it wants.
#ifndef FI_TESTS_SUPPORT_COMPOUND_FILE_WRITER_H_
#define FI_TESTS_SUPPORT_COMPOUND_FILE_WRITER_H_

#include <cstdint>
#include <string>
#include <vector>

namespace fi::testing {

inline constexpr uint32_t kEndOfChain = 0xFFFFFFFE;
inline constexpr uint32_t kFreeSector = 0xFFFFFFFF;
inline constexpr uint32_t kNothing = 0xFFFFFFFF;  // no sibling, no child

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

// One directory entry, 128 bytes.
struct EntryRecord {
  std::u16string name;
  uint8_t kind = 0;
  uint32_t left = kNothing;
  uint32_t right = kNothing;
  uint32_t child = kNothing;
  std::string classId{};
  uint32_t start = 0;
  uint64_t size = 0;
};
std::string EntryBytes(const EntryRecord& entry);

// The root of the balanced tree of the entries from `low` up to `high`, not included.
uint32_t TreeRoot(uint32_t low, uint32_t high);
// Sets the siblings of entry `id` in that tree.
void SetSiblings(uint32_t id, uint32_t low, uint32_t high, EntryRecord* entry);

// The 512 bytes at the start; the FAT sectors `fat` are listed as far as there is room.
std::string CompoundHeader(uint32_t shift, uint32_t directory, uint32_t miniFat, uint32_t difat,
                           const std::vector<uint32_t>& fat);

// The words in little-endian order.
std::string Words(const std::vector<uint32_t>& words);

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_COMPOUND_FILE_WRITER_H_
