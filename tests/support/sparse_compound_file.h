// Handles on files whose bytes are computed as they are read, with counters of what is read.
#ifndef FI_TESTS_SUPPORT_SPARSE_COMPOUND_FILE_H_
#define FI_TESTS_SUPPORT_SPARSE_COMPOUND_FILE_H_

#include <cstdint>
#include <functional>
#include <string>

#include "toolkit/io/positioned_handle.h"

namespace fi::testing {

class ComputedFile : public io::PositionedHandle {
 public:
  static constexpr uint32_t kBlock = 512;

  // A file of so many blocks; `block` gives the bytes of one by its number.
  ComputedFile(uint32_t blocks, std::function<std::string(uint32_t)> block)
      : PositionedHandle("computed.doc"), blocks_(blocks), block_(std::move(block)) {}
  // Its bytes are those in memory, whose number is a multiple of kBlock.
  explicit ComputedFile(const std::string& bytes);
  ~ComputedFile() override = default;

  uint64_t reads = 0;
  uint64_t bytesRead = 0;

 protected:
  int64_t Size() override { return int64_t{blocks_} * kBlock; }
  int32_t ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) override;

 private:
  const uint32_t blocks_;
  const std::function<std::string(uint32_t)> block_;
};

// A large compound file, of version 3. At its front is the FAT, behind it the DIFAT, then one body
// that all streams share, in which each sector is filled with SparseFill, and the directory at the
// end: the root and `streams` streams under `name`, in the format's order.
struct SparseLayout {
  uint32_t sectors;
  uint32_t streams;
  std::function<std::u16string(uint32_t)> name;  // by the entry's number, from 1

  uint32_t FatSectors() const { return (sectors + 127) / 128; }
  uint32_t BodyStart() const { return FatSectors() + (FatSectors() - 109 + 126) / 127; }
  uint32_t DirectoryStart() const { return sectors - streams / 4 - 1; }
};
std::function<std::string(uint32_t)> SparseBlocks(const SparseLayout& layout);

inline uint8_t SparseFill(uint32_t sector) { return static_cast<uint8_t>(sector * 7 + 1); }

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_SPARSE_COMPOUND_FILE_H_
