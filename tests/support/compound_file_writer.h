// Writes compound files for tests: well-formed ones, and then whatever a test breaks in them.
#ifndef FI_TESTS_SUPPORT_COMPOUND_FILE_WRITER_H_
#define FI_TESTS_SUPPORT_COMPOUND_FILE_WRITER_H_

#include <cstdint>
#include <string>
#include <string_view>
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

enum class SiblingTree {
  kBalanced,
  kRightList,     // in order, each the right sibling of the one before
  kUnsortedList,  // the same in the order given
};

struct CompoundOptions {
  uint32_t sectorShift = 9;
  SiblingTree tree = SiblingTree::kBalanced;
  bool backwards = false;  // every chain runs from high sectors to low ones
  // Directory and FAT in front of what they describe. For files without storages whose FAT is one
  // sector.
  bool tablesFirst = false;
};

// Offsets of the words of an entry that tests overwrite.
enum EntryField : uint32_t {
  kEntryLeft = 68,
  kEntryRight = 72,
  kEntryChild = 76,
  kEntryStart = 116,
  kEntrySize = 120
};

// The bytes of a file and where its parts lie.
struct CompoundImage {
  std::string bytes;
  uint32_t shift = 9;
  std::vector<uint32_t> fat;  // sector numbers
  std::vector<uint32_t> difat;
  std::vector<uint32_t> miniFat;
  std::vector<uint32_t> directory;

  uint64_t SectorOffset(uint32_t sector) const { return (uint64_t{sector} + 1) << shift; }
  uint64_t EntryOffset(uint32_t id) const;

  void SetWord(uint64_t offset, uint32_t value);
  uint32_t Word(uint64_t offset) const;
  void SetLink(uint32_t sector, uint32_t next);
  void SetMiniLink(uint32_t mini, uint32_t next);
  void SetEntry(uint32_t id, EntryField field, uint32_t value) {
    SetWord(EntryOffset(id) + field, value);
  }
  uint32_t Entry(uint32_t id, EntryField field) const { return Word(EntryOffset(id) + field); }
};

// The entries are numbered as they are met: the root 0, then each storage's children in the order
// given, before the children of the first of them.
CompoundImage WriteCompoundFile(std::vector<Node> children, const CompoundOptions& options = {},
                                std::string rootClass = "");

// One directory entry, 128 bytes.
struct EntryRecord {
  std::u16string name;
  uint8_t kind = 0;
  uint32_t left = kNothing;
  uint32_t right = kNothing;
  uint32_t child = kNothing;
  std::string classId;
  uint32_t start = 0;
  uint64_t size = 0;
};
std::string EntryBytes(const EntryRecord& entry);

// The 512 bytes at the start, with no FAT sector listed.
std::string CompoundHeader(uint32_t shift, uint32_t directory, uint32_t miniFat, uint32_t difat);

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_COMPOUND_FILE_WRITER_H_
